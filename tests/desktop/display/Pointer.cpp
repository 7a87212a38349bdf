#include "desktop/display/Pointer.h"

#include <xcb/xtest.h>

namespace kestrelbay::desktop {

namespace {
constexpr int kDragSteps = 12;
}  // namespace

void Pointer::send(std::uint8_t type, std::uint8_t detail, const QPoint &place) {
    xcb_test_fake_input(client_.get(), type, detail, XCB_CURRENT_TIME, client_.root(),
                        static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                        0);
    client_.sync();
    place_ = place;
}

void Pointer::moveTo(const QPoint &place) {
    // Off the spot and onto it: menus do not take notice of a pointer at rest.
    send(XCB_MOTION_NOTIFY, 0, place - QPoint(1, 1));
    send(XCB_MOTION_NOTIFY, 0, place);
}

void Pointer::click(const QPoint &place, Button button) {
    moveTo(place);
    send(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button), place);
    send(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button), place);
}

void Pointer::turnWheelDown(int notches) {
    const auto wheel = static_cast<std::uint8_t>(Button::WheelDown);
    for (int i = 0; i < notches; ++i) {
        send(XCB_BUTTON_PRESS, wheel, place_);
        send(XCB_BUTTON_RELEASE, wheel, place_);
    }
}

void Pointer::press(const QPoint &place) {
    moveTo(place);
    send(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(Button::Left), place);
}

void Pointer::dragTo(const QPoint &place) {
    const QPoint start = place_;
    for (int step = 1; step <= kDragSteps; ++step)
        send(XCB_MOTION_NOTIFY, 0, start + (place - start) * step / kDragSteps);
}

void Pointer::release() {
    send(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(Button::Left), place_);
}

}  // namespace kestrelbay::desktop
