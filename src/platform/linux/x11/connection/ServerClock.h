#pragma once

#include "platform/linux/x11/connection/WindowAtoms.h"

namespace kestrelbay::x11 {

/// Has the server tell its time. Any thread.
class ServerClock {
public:
    ServerClock(const XConnection &connection, const WindowAtoms &atoms);

    /// The time comes with a PropertyNotify of window(), before the answer to any
    /// later question.
    void ask() const;
    [[nodiscard]] xcb_window_t window() const { return window_; }

private:
    const XConnection &connection_;
    xcb_atom_t property_;
    xcb_window_t window_ = XCB_NONE;
};

}  // namespace kestrelbay::x11
