#include "preferences/rules/display/Mouse.h"

#include <cstdlib>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace kestrelbay::testing {

void Mouse::Disconnect::operator()(xcb_connection_t *c) const {
    xcb_disconnect(c);
}

Mouse::Mouse(const QString &displayName)
    : connection_(xcb_connect(displayName.toLatin1().constData(), nullptr)) {}

Mouse::~Mouse() = default;

void Mouse::send(std::uint8_t type, std::uint8_t detail, QPoint place) {
    xcb_connection_t *c = connection_.get();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
    xcb_test_fake_input(c, type, detail, XCB_CURRENT_TIME, root,
                        static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                        0);
    std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
}

void Mouse::moveTo(QPoint place) {
    send(XCB_MOTION_NOTIFY, 0, place);
}

void Mouse::press() {
    send(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1, {});
}

void Mouse::release() {
    send(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1, {});
}

}  // namespace kestrelbay::testing
