#include "support/FakeTray.h"

#include <algorithm>
#include <cstring>

namespace kestrelbay::testing {

FakeTray::FakeTray(const QString &displayName)
    : connection_(xcb_connect(displayName.toLatin1().constData(), nullptr)),
      window_(xcb_generate_id(connection_.get())) {
    xcb_connection_t *const c = connection_.get();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
    xcb_create_window(c, 0, window_, root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(c, window_, selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = root;
    event.type = atom("MANAGER");
    event.data.data32[1] = selection;
    event.data.data32[2] = window_;
    xcb_send_event(c, 0, root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
    sync();
}

void FakeTray::setForeground(const std::array<std::uint32_t, 3> &color) {
    std::array<std::uint32_t, 12> words{};
    std::copy(color.begin(), color.end(), words.begin());
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_,
                        atom("_NET_SYSTEM_TRAY_COLORS"), XCB_ATOM_CARDINAL, 32, words.size(),
                        words.data());
    sync();
}

void FakeTray::paintPanel(std::uint32_t color) {
    xcb_connection_t *const c = connection_.get();
    if (panel_ == XCB_NONE) {
        panel_ = xcb_generate_id(c);
        const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
        const std::uint32_t overrideRedirect = 1;
        xcb_create_window(c, XCB_COPY_FROM_PARENT, panel_, screen->root, 0, 0, 200, 28, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
        const xcb_atom_t dock = atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, panel_, atom("_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &dock);
        xcb_map_window(c, panel_);
    }
    xcb_change_window_attributes(c, panel_, XCB_CW_BACK_PIXEL, &color);
    xcb_clear_area(c, 0, panel_, 0, 0, 0, 0);
    sync();
}

xcb_atom_t FakeTray::atom(const char *name) const {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_.get(),
        xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name),
        nullptr));
    return reply->atom;
}

void FakeTray::sync() const {
    const Reply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
        connection_.get(), xcb_get_input_focus(connection_.get()), nullptr));
}

}  // namespace kestrelbay::testing
