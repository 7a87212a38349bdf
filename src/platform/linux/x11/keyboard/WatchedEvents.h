#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include <xcb/xinput.h>

#include "platform/linux/glib/MainLoopSleep.h"
#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// The events of the tap's connection, for the main thread to read, and a watchdog thread. A
/// press by which the server froze the keyboard holds back all typing until it is answered.
/// Where the main thread does not do so in time, the watchdog lets go of every grab of the
/// connection and gives the key to the program in front; the main thread then never sees the
/// press. With nothing to watch the thread sleeps without a timer. It stays out of the way
/// of a main thread that reads at once: it holds no lock then, and nobody wakes it. In particular
/// it does not watch the socket while the main loop sleeps, which the socket wakes as well: two
/// threads that are woken at once take both processors from a server that has a question to answer.
class WatchedEvents {
public:
    using Clock = std::chrono::steady_clock;
    struct Settings {
        /// How long a press may wait, from when it came or the main thread began with it.
        std::chrono::milliseconds patience;
        /// The main thread has something to read, though its socket may not say so. Called
        /// on the watchdog's thread.
        std::function<void()> eventsTaken;
    };

    /// The keyboard is that of the grabs of XInput 2 (DownKeys).
    WatchedEvents(std::shared_ptr<const XConnection> connection, xcb_input_device_id_t keyboard,
                  Settings settings);
    ~WatchedEvents();
    WatchedEvents(const WatchedEvents &) = delete;
    WatchedEvents &operator=(const WatchedEvents &) = delete;

    /// The next event; null when there is none now. Asking for it says that the last one has
    /// been dealt with. Main thread.
    [[nodiscard]] Reply<xcb_generic_event_t> next();

    /// There may be something to read: waiting for an answer may have taken events off the socket.
    /// Main thread.
    void mayHaveMore();

    /// Has the watchdog let go of the grabs since it was last asked? Main thread.
    [[nodiscard]] bool takeRelease();

private:
    struct Close {
        explicit Close(int descriptor) : fd(descriptor) {}
        ~Close();
        Close(const Close &) = delete;
        Close &operator=(const Close &) = delete;
        const int fd;
    };

    void run();
    /// Until there is something to look at, or the timer is due.
    void sleep() const;
    [[nodiscard]] bool leaveToMainThread(std::optional<Clock::time_point> deadline) const;
    void lookAt(Clock::time_point due);
    [[nodiscard]] Reply<xcb_generic_event_t> read();
    [[nodiscard]] bool isPress(const xcb_generic_event_t &event) const;
    void takeOver();
    void release();

    const std::shared_ptr<const XConnection> connection_;
    const xcb_input_device_id_t keyboard_;
    const std::uint8_t xinputOpcode_;
    const Settings settings_;
    const Close timer_;
    const Close stop_;
    std::atomic<bool> isLooking_{false};
    const MainLoopSleep mainLoop_;

    std::mutex mutex_;  // guards all below
    /// Read by the watchdog for the main thread.
    std::deque<Reply<xcb_generic_event_t>> taken_;
    /// Since when a press has waited, or been in the main thread's hands.
    std::optional<Clock::time_point> pressSince_;
    /// Presses sent before the server worked off this request have been answered by it.
    std::optional<std::uint32_t> answeredBefore_;
    bool released_ = false;
    std::optional<Clock::time_point> timerDue_;

    std::thread thread_;
};

}  // namespace kestrelbay::x11
