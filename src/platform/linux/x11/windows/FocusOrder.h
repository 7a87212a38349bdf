#pragma once

#include <chrono>
#include <mutex>
#include <optional>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// Keeps the changes of focus that we ask for apart, so that they take effect in their order.
///
/// Some programs have to take the focus themselves when the window manager tells them to, and
/// do so in their own time, with the time of the server at which they were told. If two are
/// told in the same millisecond, the slower one has the focus in the end.
///
/// Any thread; no lock is held while the server is waited for.
class FocusOrder {
public:
    explicit FocusOrder(const WindowSystem &system) : system_(system) {}

    /// The window manager has been asked to give the focus to a window, or to take it away.
    void asked(const WindowAddress &window, bool toHaveIt);

    /// Returns when what was asked for last has come about, at once if that is long ago. A
    /// window manager that refuses is waited for no longer than 400 ms.
    void awaitLast();

private:
    using Clock = std::chrono::steady_clock;

    struct Request {
        WindowAddress window;
        bool toHaveIt;
        Clock::time_point when;
    };

    [[nodiscard]] bool hasComeAbout(const Request &request) const;

    const WindowSystem &system_;
    std::mutex mutex_;
    std::optional<Request> last_;
};

}  // namespace kestrelbay::x11
