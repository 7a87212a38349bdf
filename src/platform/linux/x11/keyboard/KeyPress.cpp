#include "platform/linux/x11/keyboard/KeyPress.h"

namespace kestrelbay::x11 {

std::optional<KeyPress> keyPressOf(const xcb_generic_event_t &event, std::uint8_t xinputOpcode) {
    const unsigned type = event.response_type & 0x7fU;
    if (type == XCB_KEY_PRESS) {
        const auto &press = reinterpret_cast<const xcb_key_press_event_t &>(event);
        return KeyPress{{press.detail, static_cast<std::uint8_t>(press.state & 0xffU)}, {}};
    }
    const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event);
    if (type != XCB_GE_GENERIC || generic.extension != xinputOpcode ||
        generic.event_type != XCB_INPUT_KEY_PRESS)
        return std::nullopt;
    const auto &press = reinterpret_cast<const xcb_input_key_press_event_t &>(event);
    return KeyPress{{static_cast<XKeycode>(press.detail),
                     static_cast<std::uint8_t>(press.mods.effective & 0xffU)},
                    press.deviceid};
}

void answer(xcb_connection_t *connection, const KeyPress &press, EventVerdict verdict) {
    // The press made the passive grab an active one, until the key is let go.
    // Given back now, the keyboard thaws and a launched menu can grab it itself.
    // Thawed first and given back then, it would be ours while the server works
    // off what was typed meanwhile, and hold back the raw events of it.
    if (verdict == EventVerdict::Pass && press.device)
        xcb_input_xi_allow_events(connection, XCB_CURRENT_TIME, *press.device,
                                  XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0, XCB_NONE);
    else if (verdict == EventVerdict::Pass)
        xcb_allow_events(connection, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
    else if (press.device)
        xcb_input_xi_ungrab_device(connection, XCB_CURRENT_TIME, *press.device);
    else
        xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
    xcb_flush(connection);
}

}  // namespace kestrelbay::x11
