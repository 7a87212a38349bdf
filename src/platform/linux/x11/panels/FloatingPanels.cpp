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
    if (failure)
        return;
    panels_.try_emplace(window);
}

void FloatingPanels::handle(const xcb_generic_event_t &event) {
    switch (event.response_type & 0x7fU) {
        case XCB_MAP_NOTIFY: {
            const auto &map = reinterpret_cast<const xcb_map_notify_event_t &>(event);
            shown(map.event, map.window);
            break;
        }
        case XCB_UNMAP_NOTIFY:
            hidden(reinterpret_cast<const xcb_unmap_notify_event_t &>(event).window);
            break;
        case XCB_DESTROY_NOTIFY: {
            const auto window = reinterpret_cast<const xcb_destroy_notify_event_t &>(event).window;
            hidden(window);
            panels_.erase(window);
            break;
        }
        case XCB_CONFIGURE_NOTIFY:
            moved(reinterpret_cast<const xcb_configure_notify_event_t &>(event));
            break;
        case XCB_CIRCULATE_NOTIFY:
            raiseAll();
            break;
        default:
            break;
    }
}

void FloatingPanels::shown(xcb_window_t toldOf, xcb_window_t window) {
    const auto panel = panels_.find(window);
    if (panel == panels_.end()) {
        raiseAll();
    } else if (toldOf == window) {
        panel->second.isShown = true;
        panel->second.raisesLeft = kRaisesPerShowing;
        watchOthers();
        // Showing a window leaves it where it was among the others.
        raise(window);
    }
}

void FloatingPanels::hidden(xcb_window_t window) {
    const auto panel = panels_.find(window);
    if (panel == panels_.end() || !panel->second.isShown)
        return;
    panel->second.isShown = false;
    watchOthers();
}

void FloatingPanels::moved(const xcb_configure_notify_event_t &event) {
    const auto panel = panels_.find(event.window);
    if (panel == panels_.end()) {
        raiseAll();
        return;
    }
    // Told once of the window itself and once of the root.
    if (event.event != event.window)
        return;
    // What moved nothing has raised it.
    const std::array place{int{event.x}, int{event.y}, int{event.width}, int{event.height}};
    if (panel->second.place == place && panel->second.raisesLeft > 0)
        --panel->second.raisesLeft;
    panel->second.place = place;
}

void FloatingPanels::watchOthers() const {
    const bool isAnyShown =
        std::ranges::any_of(panels_, [](const auto &panel) { return panel.second.isShown; });
    const XConnection &connection = system_.connection();
    connection.selectEvents(connection.root(), isAnyShown ? XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY
                                                          : XCB_EVENT_MASK_NO_EVENT);
    system_.flush();
}

void FloatingPanels::raiseAll() const {
    for (const auto &[window, panel] : panels_)
        if (panel.isShown && panel.raisesLeft > 0)
            raise(window);
}

void FloatingPanels::raise(xcb_window_t window) const {
    // The server does nothing, and tells of nothing, when no window covers it.
    const std::uint32_t whenCovered = XCB_STACK_MODE_TOP_IF;
    xcb_configure_window(system_.connection().get(), window, XCB_CONFIG_WINDOW_STACK_MODE,
                         &whenCovered);
    system_.flush();
}

}  // namespace kestrelbay::x11
