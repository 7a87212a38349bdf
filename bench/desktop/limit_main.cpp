// The least that a hotkey program can do: it grabs Super and one key, and at each
// press sends one message that asks for one window known beforehand.
//
// usage: desktop_bench_limit WINDOW KEYCODE

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include <xcb/xcb.h>

namespace {

struct Disconnect {
    void operator()(xcb_connection_t *c) const { xcb_disconnect(c); }
};
struct Free {
    void operator()(void *p) const { std::free(p); }
};

xcb_atom_t activeWindowAtom(xcb_connection_t *c) {
    constexpr std::string_view kName = "_NET_ACTIVE_WINDOW";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, kName.size(), kName.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_NONE};
}

}  // namespace

int main(int argc, char *argv[]) {
    if (argc != 3)
        return 2;
    const auto window = static_cast<xcb_window_t>(std::strtoul(argv[1], nullptr, 0));
    const auto keycode = static_cast<xcb_keycode_t>(std::strtoul(argv[2], nullptr, 0));
    const std::unique_ptr<xcb_connection_t, Disconnect> connection(xcb_connect(nullptr, nullptr));
    xcb_connection_t *c = connection.get();
    if (xcb_connection_has_error(c) != 0)
        return 1;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;

    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = activeWindowAtom(c);
    message.data.data32[0] = 2;  // as a pager

    xcb_grab_key(c, 0, root, XCB_MOD_MASK_4, keycode, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(c);
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_wait_for_event(c)}) {
        if ((event->response_type & 0x7fU) != XCB_KEY_PRESS)
            continue;
        message.data.data32[1] = reinterpret_cast<const xcb_key_press_event_t &>(*event).time;
        xcb_send_event(c, 0, root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&message));
        xcb_flush(c);
    }
    return 0;
}
