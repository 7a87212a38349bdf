#include "support/KeyPresser.h"

#include <cstdlib>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace kestrelbay::testing {

KeyPresser::KeyPresser(const QString &displayName)
    : connection_(xcb_connect(displayName.toLatin1().constData(), nullptr)) {}

KeyPresser::~KeyPresser() = default;

void KeyPresser::send(std::uint8_t type, std::uint8_t keycode) {
    xcb_connection_t *c = connection_.get();
    xcb_test_fake_input(c, type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
}

void KeyPresser::press(std::uint8_t keycode) {
    send(XCB_KEY_PRESS, keycode);
}

void KeyPresser::release(std::uint8_t keycode) {
    send(XCB_KEY_RELEASE, keycode);
}

void KeyPresser::chord(std::initializer_list<std::uint8_t> keycodes) {
    const std::vector<std::uint8_t> keys(keycodes);
    for (const std::uint8_t code : keys)
        press(code);
    for (auto code = keys.rbegin(); code != keys.rend(); ++code)
        release(*code);
}

}  // namespace kestrelbay::testing
