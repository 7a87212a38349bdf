#pragma once

namespace kestrelbay::macos {

/// How the user comes back to the machine.
enum class Return { MachineWakes, ScreensWake, SessionBecomesActive };
/// Tells those who watch.
void userReturns(Return how);

/// Some program has secure input on, or none has; none until told.
void setSecureInput(bool isOn);
/// How often that was asked.
[[nodiscard]] int secureInputQueries();

}  // namespace kestrelbay::macos
