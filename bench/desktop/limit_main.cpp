// The least that a hotkey program can do: it grabs Super and one key, and at each
// press sends one message that asks for one window known beforehand.
//
// With "asks" it does as much as one has to that can pass a key back and decides by what is in
// front: its grab is a synchronous one, and it asks which window is active and waits for the
// answer.
//
// usage: desktop_bench_limit WINDOW KEYCODE [asks]

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
    const bool asks = argc == 4 && std::string_view(argv[3]) == "asks";
    if (argc != 3 && !asks)
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

    xcb_grab_key(c, 0, root, XCB_MOD_MASK_4, keycode, XCB_GRAB_MODE_ASYNC,
                 asks ? XCB_GRAB_MODE_SYNC : XCB_GRAB_MODE_ASYNC);
    xcb_flush(c);
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_wait_for_event(c)}) {
        if ((event->response_type & 0x7fU) != XCB_KEY_PRESS)
            continue;
        if (asks) {
            const xcb_get_property_cookie_t question =
                xcb_get_property(c, 0, root, message.type, XCB_ATOM_WINDOW, 0, 1);
            xcb_allow_events(c, XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
            const std::unique_ptr<xcb_get_property_reply_t, Free> active(
                xcb_get_property_reply(c, question, nullptr));
            if (!active)
                return 1;
        }
        message.data.data32[1] = reinterpret_cast<const xcb_key_press_event_t &>(*event).time;
        xcb_send_event(c, 0, root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&message));
        xcb_flush(c);
    }
    return 0;
}
