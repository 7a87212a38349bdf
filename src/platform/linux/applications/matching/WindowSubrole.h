#pragma once

#include <QString>

#include "platform/linux/applications/matching/ApplicationMatch.h"

namespace kestrelbay {

/// As WindowElement::subrole() has it.
[[nodiscard]] QString subroleOf(WindowType type);

}  // namespace kestrelbay
