#pragma once

#include <QString>

#include "platform/EventTap.h"

namespace kestrelbay {

/// Can the tap be had later in this session, so that it is worth trying again?
[[nodiscard]] bool canChange(TapProblem problem);

/// The reason in a few English words, for the log and for reports; empty for none.
[[nodiscard]] QString inWords(TapProblem problem);

}  // namespace kestrelbay
