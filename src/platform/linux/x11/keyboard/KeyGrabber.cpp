#include "platform/linux/x11/keyboard/KeyGrabber.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace kestrelbay::x11 {

namespace {

std::set<KeyGrab> difference(const std::set<KeyGrab> &a, const std::set<KeyGrab> &b) {
    std::set<KeyGrab> rest;
    std::ranges::set_difference(a, b, std::inserter(rest, rest.end()));
    return rest;
}

}  // namespace

void KeyGrabber::apply(const std::set<KeyGrab> &wanted) {
    const std::set<KeyGrab> held = difference(wanted_, refused_);
    refused_ = request(difference(wanted, held));
    release(difference(wanted_, wanted));
    wanted_ = wanted;
}

void KeyGrabber::forget() {
    wanted_.clear();
    refused_.clear();
}

std::set<KeyGrab> KeyGrabber::request(const std::set<KeyGrab> &grabs) {
    struct Pending {
        KeyGrab grab;
        xcb_void_cookie_t cookie;
    };
    // All requests first, then all answers: one round trip however many they are.
    std::vector<Pending> pending;
    for (const KeyGrab &grab : grabs) {
        for (const xcb_window_t root : connection_.roots()) {
            pending.push_back({grab, xcb_grab_key_checked(
                                         connection_.get(), 0, root, grab.modifiers, grab.keycode,
                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC)});
        }
    }
    std::set<KeyGrab> refused;
    for (const Pending &one : pending) {
        if (const Reply<xcb_generic_error_t> error{
                xcb_request_check(connection_.get(), one.cookie)})
            refused.insert(one.grab);
    }
    return refused;
}

void KeyGrabber::release(const std::set<KeyGrab> &grabs) {
    for (const KeyGrab &grab : grabs) {
        for (const xcb_window_t root : connection_.roots())
            xcb_ungrab_key(connection_.get(), grab.keycode, root, grab.modifiers);
    }
    xcb_flush(connection_.get());
}

}  // namespace kestrelbay::x11
