#include "support/KeyboardSettings.h"

#include <array>
#include <stdexcept>

#include <sys/uio.h>

// A C header that names a field after a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitMapping
#include <xcb/xcbext.h>
#include <xcb/xkb.h>
#undef explicit

namespace kestrelbay::testing {

namespace {

constexpr std::uint8_t kAllModifiers = 0xff;
constexpr std::uint8_t kUnusedKeycode = 254;

void send(xcb_connection_t *connection, xcb_xkb_latch_lock_state_request_t request) {
    request.deviceSpec = XCB_XKB_ID_USE_CORE_KBD;
    const xcb_protocol_request_t protocol{1, &xcb_xkb_id, XCB_XKB_LATCH_LOCK_STATE, 1};
    std::array<iovec, 3> parts{};  // two are for the library
    parts[2] = {&request, sizeof request};
    xcb_send_request(connection, 0, &parts[2], &protocol);
}

}  // namespace

KeyboardSettings::KeyboardSettings(const QString &displayName)
    : connection_(xcb_connect(displayName.toLatin1().constData(), nullptr)) {
    const Reply<xcb_xkb_use_extension_reply_t> reply(xcb_xkb_use_extension_reply(
        connection_.get(),
        xcb_xkb_use_extension(connection_.get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION),
        nullptr));
    if (!reply || reply->supported == 0)
        throw std::runtime_error("no XKB");
}

void KeyboardSettings::latch(std::uint8_t modifiers) {
    xcb_xkb_latch_lock_state_request_t request{};
    request.affectModLatches = modifiers;
    // The binding takes the protocol's modLatches for padding, and so cannot be asked.
    request.pad0 = modifiers;
    send(connection_.get(), request);
    sync();
}

void KeyboardSettings::lock(std::uint8_t modifiers) {
    xcb_xkb_latch_lock_state_request_t request{};
    request.affectModLocks = kAllModifiers;
    request.modLocks = modifiers;
    send(connection_.get(), request);
    sync();
}

void KeyboardSettings::useLayout(std::uint8_t index) {
    xcb_xkb_latch_lock_state_request_t request{};
    request.lockGroup = 1;
    request.groupLock = index;
    send(connection_.get(), request);
    sync();
}

void KeyboardSettings::turnStickyKeysOn() {
    const std::array<std::uint8_t, XCB_XKB_CONST_PER_KEY_BIT_ARRAY_SIZE> untouched{};
    xcb_xkb_set_controls(connection_.get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         0, XCB_XKB_BOOL_CTRL_STICKY_KEYS, XCB_XKB_BOOL_CTRL_STICKY_KEYS,
                         XCB_XKB_CONTROL_CONTROLS_ENABLED, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                         untouched.data());
    sync();
}

void KeyboardSettings::changeMapping(int times) {
    for (int i = 0; i < times; ++i) {
        const auto keysym = static_cast<xcb_keysym_t>('a' + i % 2);
        xcb_change_keyboard_mapping(connection_.get(), 1, kUnusedKeycode, 1, &keysym);
    }
    sync();
}

void KeyboardSettings::sync() {
    std::free(xcb_get_input_focus_reply(connection_.get(), xcb_get_input_focus(connection_.get()),
                                        nullptr));
}

}  // namespace kestrelbay::testing
