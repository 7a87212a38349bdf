#include "platform/linux/x11/keyboard/TapOwnership.h"

#include <array>
#include <string_view>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

namespace {

constexpr std::string_view kSelection = "_KESTRELBAY_EVENT_TAP";

xcb_window_t ownerOf(xcb_connection_t *connection, xcb_atom_t selection) {
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

}  // namespace

bool claimTapOwnership(const XConnection &connection) {
    xcb_connection_t *c = connection.get();
    const xcb_atom_t selection = internAtoms(connection, std::array{kSelection})[0];
    if (selection == XCB_ATOM_NONE || ownerOf(c, selection) != XCB_NONE)
        return false;
    const xcb_window_t window = xcb_generate_id(c);
    xcb_create_window(c, 0, window, connection.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(c, window, selection, XCB_CURRENT_TIME);
    return ownerOf(c, selection) == window;
}

}  // namespace kestrelbay::x11
