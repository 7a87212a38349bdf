#include "platform/linux/x11/connection/ServerClock.h"

namespace kestrelbay::x11 {

ServerClock::ServerClock(const XConnection &connection, const WindowAtoms &atoms)
    : connection_(connection), property_(atoms[WindowAtoms::ServerTime]) {
    if (!connection.isUsable())
        return;
    window_ = xcb_generate_id(connection.get());
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.get(), 0, window_, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

void ServerClock::ask() const {
    // Adding nothing to a property changes nothing, but is told with the time.
    xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, property_,
                        XCB_ATOM_CARDINAL, 32, 0, nullptr);
}

}  // namespace kestrelbay::x11
