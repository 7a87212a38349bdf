#include "platform/linux/x11/panels/FloatingPanels.h"

#include <algorithm>

namespace kestrelbay::x11 {

void FloatingPanels::add(xcb_window_t window) {
    xcb_connection_t *const connection = system_.connection().get();
    const xcb_atom_t type = system_.atoms()["_NET_WM_WINDOW_TYPE_NOTIFICATION"];
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window,
                        system_.atoms()["_NET_WM_WINDOW_TYPE"], XCB_ATOM_ATOM, 32, 1, &type);
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    // Waited for: the window is shown over another connection, and that must not be missed.
    const Reply<xcb_generic_error_t> failure(xcb_request_check(
        connection,
        xcb_change_window_attributes_checked(connection, window, XCB_CW_EVENT_MASK, &events)));
    if (!failure)
        panels_.try_emplace(window);
}

void FloatingPanels::handle(const xcb_generic_event_t &event) {
    switch (event.response_type & 0x7fU) {
        case XCB_MAP_NOTIFY:
            // Of another one, which covers them now; or of a panel, since showing a window
            // leaves it where it was among the others.
            setRaisesLeft(reinterpret_cast<const xcb_map_notify_event_t &>(event).window,
                          kRaisesPerShowing);
            break;
        case XCB_CONFIGURE_NOTIFY: {
            const auto &change = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
            if (panels_.contains(change.window)) {
                countRaise(change);
                return;
            }
            break;
        }
        case XCB_CIRCULATE_NOTIFY:  // what some old window managers raise windows by
            break;
        case XCB_UNMAP_NOTIFY:
            setRaisesLeft(reinterpret_cast<const xcb_unmap_notify_event_t &>(event).window, 0);
            return;
        case XCB_DESTROY_NOTIFY: {
            const auto window = reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window;
            setRaisesLeft(window, 0);
            panels_.erase(window);
            return;
        }
        default:
            return;
    }
    raiseCovered();
}

void FloatingPanels::setRaisesLeft(xcb_window_t window, int raises) {
    const auto panel = panels_.find(window);
    if (panel == panels_.end())
        return;
    panel->second.raisesLeft = raises;
    const bool isAnyShown =
        std::ranges::any_of(panels_, [](const auto &each) { return each.second.raisesLeft > 0; });
    const XConnection &connection = system_.connection();
    connection.selectEvents(connection.root(), isAnyShown ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY
                                                          : XCB_EVENT_MASK_NO_EVENT);
    system_.flush();
}

void FloatingPanels::countRaise(const xcb_configure_notify_event_t &event) {
    // Told once of the window itself and once of the root.
    if (event.event != event.window)
        return;
    Panel &panel = panels_[event.window];
    // What moved nothing has raised it.
    const std::array place{int{event.x}, int{event.y}, int{event.width}, int{event.height}};
    if (panel.place == place && panel.raisesLeft > 0)
        --panel.raisesLeft;
    panel.place = place;
}

void FloatingPanels::raiseCovered() const {
    // The server does nothing, and tells of nothing, when no window covers it.
    const std::uint32_t whenCovered = XCB_STACK_MODE_TOP_IF;
    for (const auto &[window, panel] : panels_)
        if (panel.raisesLeft > 0)
            xcb_configure_window(system_.connection().get(), window, XCB_CONFIG_WINDOW_STACK_MODE,
                                 &whenCovered);
    system_.flush();
}

}  // namespace kestrelbay::x11
