#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>

#include <QString>

#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/glib/LoopReader.h"
#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/windows/WindowTracker.h"

namespace kestrelbay::x11 {

/// Hears on a background loop what the X server tells of windows unasked.
///
/// Of the active window a connection of its own hears at once, since what was active for a
/// moment nobody can ask for later. All else waits on the tracker's connection for the next
/// picture: nobody needs it before, and some windows change their titles each second. So that
/// the server need not keep too much of it, it is taken in now and then.
class WindowNews {
public:
    struct Handlers {
        /// Another window is active, or another window manager is there.
        std::function<void()> activeChanged;
        /// There are other windows.
        std::function<void()> windowsChanged;
    };

    /// The handlers are called on the loop, which has to have ended when this object is
    /// destroyed. The tracker has a usable connection.
    WindowNews(const QString &displayName, WindowTracker &tracker, BackgroundLoop &loop,
               Handlers handlers);

    /// Somebody is about to ask the server. Answers come over the tracker's descriptor, and
    /// whoever else reads it then takes them from the thread that waits, which has to be woken
    /// a second time. Any thread.
    void pressBegins() { lastPress_ = Clock::now(); }

private:
    using Clock = std::chrono::steady_clock;

    void listen(const QString &displayName, BackgroundLoop &loop);
    void takeInRootEvents();
    void takeInLateEvents();

    WindowTracker &tracker_;
    const Handlers handlers_;
    std::atomic<Clock::time_point> lastPress_{};
    // On the loop's thread only.
    std::chrono::milliseconds pause_;
    LoopReader lateEvents_;
    std::optional<XConnection> roots_;
    std::optional<LoopReader> rootEvents_;
    xcb_atom_t activeWindow_ = XCB_ATOM_NONE;
    xcb_atom_t clientList_ = XCB_ATOM_NONE;
    xcb_atom_t managerCheck_ = XCB_ATOM_NONE;
};

}  // namespace kestrelbay::x11
