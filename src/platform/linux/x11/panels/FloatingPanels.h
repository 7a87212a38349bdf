#pragma once

#include <array>
#include <map>
#include <optional>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// Keeps windows that no window manager manages above the others: nobody else puts
/// them back when a full-screen window is raised over them.
///
/// While one of them is shown it listens to what becomes of all windows. Whether its
/// own are covered the server would tell too, but not under a compositing manager.
class FloatingPanels {
public:
    explicit FloatingPanels(const WindowSystem &system) : system_(system) {}

    /// A window that was never shown.
    void add(xcb_window_t window);
    /// Of the connection of the window system.
    void handle(const xcb_generic_event_t &event);

private:
    /// Two programs that both insist on being on top would fight without end.
    static constexpr int kRaisesPerShowing = 5;

    struct Panel {
        /// None while it is hidden.
        int raisesLeft = 0;
        /// X, y, width and height.
        std::optional<std::array<int, 4>> place;
    };

    void setRaisesLeft(xcb_window_t window, int raises);
    void countRaise(const xcb_configure_notify_event_t &event);
    void raiseCovered() const;

    const WindowSystem &system_;
    std::map<xcb_window_t, Panel> panels_;
};

}  // namespace kestrelbay::x11
