#pragma once

#include <memory>

#include "platform/LoginItem.h"

namespace kestrelbay {

/// The one for the running system: a service from macOS 13 on, a launch agent's file
/// in the user's home before.
[[nodiscard]] std::unique_ptr<LoginItem> makeLoginItem();

}  // namespace kestrelbay
