#include "platform/linux/x11/keyboard/DisplayClaim.h"

#include <array>
#include <string_view>

namespace kestrelbay::x11 {

std::optional<DisplayClaim> DisplayClaim::take(const XConnection &connection) {
    constexpr std::string_view kSelection = "_KESTRELBAY_EVENT_TAP";
    const xcb_atom_t selection = internAtoms(connection, std::array{kSelection})[0];
    if (selection == XCB_ATOM_NONE)
        return std::nullopt;
    const xcb_window_t owner = connection.createInputOnlyWindow();
    // A selection goes to whoever asks last. With the server held, nobody asks between
    // the question and the request.
    xcb_grab_server(connection.get());
    if (connection.ownerOf(selection) == XCB_NONE)
        xcb_set_selection_owner(connection.get(), owner, selection, XCB_CURRENT_TIME);
    xcb_ungrab_server(connection.get());
    if (connection.ownerOf(selection) != owner)
        return std::nullopt;
    return DisplayClaim(owner, selection);
}

bool DisplayClaim::isLostBy(const xcb_generic_event_t &event) const {
    if ((event.response_type & 0x7fU) != XCB_SELECTION_CLEAR)
        return false;
    const auto &clear = reinterpret_cast<const xcb_selection_clear_event_t &>(event);
    return clear.owner == owner_ && clear.selection == selection_;
}

}  // namespace kestrelbay::x11
