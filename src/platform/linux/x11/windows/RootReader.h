#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// What the window manager tells of one screen.
struct Root {
    xcb_window_t root = XCB_NONE;
    /// Front-most first, as the window manager has it.
    std::vector<xcb_window_t> windows;
    xcb_window_t active = XCB_NONE;
    /// The number of the request that told of it.
    std::uint32_t request = 0;
    /// The window by which the window manager shows that it is there.
    xcb_window_t check = XCB_NONE;
    /// That is one of a living client for certain.
    bool isAlive = false;
    WindowManagerAbilities abilities;
};

/// Asks the window managers of all screens what windows they have. Any thread.
class RootReader {
public:
    explicit RootReader(const WindowSystem &system);

    struct Question {
        xcb_get_property_cookie_t stacking, clients, active, check, supported;
    };
    /// Of every screen. Each answer has to be taken or discarded, or it stays in memory.
    [[nodiscard]] std::vector<Question> ask() const;
    [[nodiscard]] std::vector<Root> take(const std::vector<Question> &questions) const;
    void discard(const std::vector<Question> &questions) const;
    /// Does a change of this property of a root window change the answers?
    [[nodiscard]] bool reads(xcb_atom_t property) const;

private:
    const WindowSystem &system_;
    xcb_atom_t managerSelection_ = XCB_ATOM_NONE;
};

}  // namespace kestrelbay::x11
