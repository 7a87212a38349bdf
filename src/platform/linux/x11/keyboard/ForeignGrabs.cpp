#include "platform/linux/x11/keyboard/ForeignGrabs.h"

#include <array>

#include <xcb/xinput.h>

namespace kestrelbay::x11 {

ForeignGrabs::ForeignGrabs(const QString &displayName) : connection_(displayName) {
    if (!connection_.isUsable())
        return;
    // The server refuses requests of an extension whose version it was not told.
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection_.get(), xcb_input_xi_query_version(connection_.get(), 2, 0), nullptr));
}

bool ForeignGrabs::hasByXInput(const KeyGrab &grab) const {
    if (!connection_.isUsable())
        return false;
    xcb_connection_t *const c = connection_.get();
    const std::array<std::uint32_t, 1> mask{XCB_INPUT_XI_EVENT_MASK_KEY_PRESS};
    const std::array<std::uint32_t, 1> modifiers{grab.modifiers};
    const auto cookie = xcb_input_xi_passive_grab_device(
        c, XCB_CURRENT_TIME, connection_.root(), XCB_NONE, grab.keycode,
        XCB_INPUT_DEVICE_ALL_MASTER, modifiers.size(), mask.size(), XCB_INPUT_GRAB_TYPE_KEYCODE,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER,
        mask.data(), modifiers.data());
    // In the same breath, so that no press falls in between.
    xcb_input_xi_passive_ungrab_device(c, connection_.root(), grab.keycode,
                                       XCB_INPUT_DEVICE_ALL_MASTER, modifiers.size(),
                                       XCB_INPUT_GRAB_TYPE_KEYCODE, modifiers.data());
    const Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(c, cookie, nullptr));
    return reply && reply->num_modifiers != 0;
}

bool ForeignGrabs::hasByCore(const KeyGrab &grab) const {
    if (!connection_.isUsable())
        return false;
    xcb_connection_t *const c = connection_.get();
    const xcb_void_cookie_t cookie =
        xcb_grab_key_checked(c, 0, connection_.root(), grab.modifiers, grab.keycode,
                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(c, grab.keycode, connection_.root(), grab.modifiers);
    const Reply<xcb_generic_error_t> error(xcb_request_check(c, cookie));
    return error != nullptr;
}

}  // namespace kestrelbay::x11
