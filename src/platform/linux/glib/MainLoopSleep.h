#pragma once

#include <functional>

namespace kestrelbay {

/// Whether the main loop sleeps until there is something to do. Known where GLib runs the main
/// loop, as it does for Qt unless the user says otherwise; elsewhere it never seems to sleep.
class MainLoopSleep {
public:
    /// woke is called on the main thread, before it does anything else. To be made and destroyed
    /// there, not by woke.
    explicit MainLoopSleep(std::function<void()> woke);
    ~MainLoopSleep();
    MainLoopSleep(const MainLoopSleep &) = delete;
    MainLoopSleep &operator=(const MainLoopSleep &) = delete;

    /// Once woke has been called it is false. Any thread.
    [[nodiscard]] static bool isAsleep();

private:
    friend struct MainLoopPoll;

    const std::function<void()> woke_;
};

}  // namespace kestrelbay
