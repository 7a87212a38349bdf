#pragma once

#include <optional>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// Being the one event tap of a display, which is owning a selection. The server gives it up
/// by itself when the connection ends, however that happens.
class DisplayClaim {
public:
    /// No value when another client has it. Of any number that ask at the same moment one
    /// gets it.
    [[nodiscard]] static std::optional<DisplayClaim> take(const XConnection &connection);

    /// Does the event say that another client has it now?
    [[nodiscard]] bool isLostBy(const xcb_generic_event_t &event) const;

private:
    DisplayClaim(xcb_window_t owner, xcb_atom_t selection) : owner_(owner), selection_(selection) {}

    xcb_window_t owner_;
    xcb_atom_t selection_;
};

}  // namespace kestrelbay::x11
