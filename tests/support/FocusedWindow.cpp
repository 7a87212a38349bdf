#include "support/FocusedWindow.h"

#include <cstring>
#include <stdexcept>

#include <xcb/xinput.h>

namespace kestrelbay::testing {

FocusedWindow::FocusedWindow(const QString &displayName)
    : connection_(xcb_connect(displayName.toLatin1().constData(), nullptr)) {
    xcb_connection_t *c = connection_.get();
    if (xcb_connection_has_error(c) != 0)
        throw std::runtime_error("no X server");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    window_ = xcb_generate_id(c);
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS};
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, root_, 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(c, window_);
    xcb_set_input_focus(c, XCB_INPUT_FOCUS_PARENT, window_, XCB_CURRENT_TIME);
    sync();
}

void FocusedWindow::sync() {
    xcb_connection_t *c = connection_.get();
    std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
}

const std::vector<std::uint8_t> &FocusedWindow::pressedKeys() {
    sync();
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if ((event->response_type & 0x7fU) == XCB_KEY_PRESS)
            pressed_.push_back(reinterpret_cast<xcb_key_press_event_t *>(event.get())->detail);
    }
    return pressed_;
}

bool FocusedWindow::grabKey(std::uint8_t keycode, std::uint16_t modifiers) {
    xcb_connection_t *c = connection_.get();
    const Reply<xcb_generic_error_t> error(
        xcb_request_check(c, xcb_grab_key_checked(c, 0, root_, modifiers, keycode,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    return !error;
}

bool FocusedWindow::grabKeyByXInput(std::uint8_t keycode, std::uint32_t modifiers) {
    xcb_connection_t *c = connection_.get();
    constexpr xcb_input_device_id_t kCoreKeyboard = 3;  // the first master, in every Xvfb
    constexpr std::uint32_t kPress = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    std::free(xcb_input_xi_query_version_reply(c, xcb_input_xi_query_version(c, 2, 0), nullptr));
    const Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
        xcb_input_xi_passive_grab_device_reply(
            c,
            xcb_input_xi_passive_grab_device(
                c, XCB_CURRENT_TIME, root_, XCB_NONE, keycode, kCoreKeyboard, 1, 1,
                XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &kPress, &modifiers),
            nullptr));
    return reply && reply->num_modifiers == 0;
}

void FocusedWindow::ungrabKey(std::uint8_t keycode, std::uint16_t modifiers) {
    xcb_ungrab_key(connection_.get(), keycode, root_, modifiers);
    sync();
}

bool FocusedWindow::grabKeyboard() {
    xcb_connection_t *c = connection_.get();
    const Reply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(c,
                                xcb_grab_keyboard(c, 0, window_, XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void FocusedWindow::ungrabKeyboard() {
    xcb_ungrab_keyboard(connection_.get(), XCB_CURRENT_TIME);
    sync();
}

xcb_atom_t FocusedWindow::atom(const char *name) {
    xcb_connection_t *c = connection_.get();
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, length, name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void FocusedWindow::ownSelection(const char *name) {
    xcb_set_selection_owner(connection_.get(), window_, atom(name), XCB_CURRENT_TIME);
    sync();
}

void FocusedWindow::announceWindowManager() {
    xcb_connection_t *c = connection_.get();
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = root_;
    message.type = atom("MANAGER");
    xcb_send_event(c, 0, root_, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    sync();
}

}  // namespace kestrelbay::testing
