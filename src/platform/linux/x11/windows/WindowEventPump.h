#pragma once

#include <atomic>
#include <chrono>

#include <QSocketNotifier>

#include "platform/linux/x11/windows/WindowTracker.h"

namespace kestrelbay::x11 {

/// Has the main loop take in what the X server sends the tracker unasked, so that the
/// server never has to keep it. To be made and destroyed on the main thread, with a
/// QCoreApplication and a usable connection.
///
/// Answers come over the same descriptor. A main thread that reads them takes them
/// from the thread that waits, which then has to be woken a second time; so for the
/// time of a press it looks away, and whoever asks takes in the events as well.
class WindowEventPump {
public:
    explicit WindowEventPump(WindowTracker &tracker);

    /// Somebody is about to ask the server. Any thread.
    void pressBegins() { lastPress_ = Clock::now(); }

private:
    using Clock = std::chrono::steady_clock;

    /// The round trips of a press are over long before.
    static constexpr std::chrono::milliseconds kPressLasts{50};

    void takeIn();

    WindowTracker &tracker_;
    std::atomic<Clock::time_point> lastPress_{};
    QSocketNotifier notifier_;
};

}  // namespace kestrelbay::x11
