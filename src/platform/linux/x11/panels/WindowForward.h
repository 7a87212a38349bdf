#pragma once

#include <chrono>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// Brings one window at a time forward, as soon as the window manager has it: a
/// request about a window it does not know yet is lost.
class WindowForward {
public:
    explicit WindowForward(const WindowSystem &system) : system_(system) {}

    void bring(xcb_window_t window);
    /// Of the connection of the window system.
    void handle(const xcb_generic_event_t &event);

private:
    /// From then on the user may have gone elsewhere. Window managers take in a new
    /// window within a fraction of this.
    static constexpr std::chrono::seconds kLongestWait{2};

    void activate(xcb_timestamp_t time, bool restores);
    void watch(std::uint32_t events) const;

    const WindowSystem &system_;
    xcb_window_t window_ = XCB_NONE;
    std::chrono::steady_clock::time_point end_;
};

}  // namespace kestrelbay::x11
