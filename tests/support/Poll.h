#pragma once

#include <chrono>
#include <functional>

namespace kestrelbay::testing {

/// Asks again and again, running the Qt event loop of this thread if there is
/// one, until the condition holds. False when it never did within the time.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition,
                             std::chrono::milliseconds timeout = std::chrono::seconds(10));

}  // namespace kestrelbay::testing
