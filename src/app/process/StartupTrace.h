#pragma once

#include <chrono>
#include <string_view>

namespace kestrelbay {

/// Where the time of a start goes: one line a step on standard error, where that is asked for.
/// Made first in main.
class StartupTrace {
public:
    /// Begins with what came before main: loading and linking, as processor time, because the
    /// clock was read by nobody then.
    StartupTrace();

    void setEnabled(bool isEnabled) { isEnabled_ = isEnabled; }
    /// What was done since the last step: its time and that of all so far, in milliseconds.
    void step(std::string_view done);

private:
    using Clock = std::chrono::steady_clock;

    const Clock::duration beforeMain_;
    const Clock::time_point main_;
    Clock::time_point last_;
    bool isEnabled_ = false;
};

}  // namespace kestrelbay
