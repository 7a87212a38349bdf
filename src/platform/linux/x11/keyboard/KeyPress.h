#pragma once

#include <optional>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include "platform/EventTap.h"
#include "platform/linux/x11/keymap/KeyGrabs.h"

namespace kestrelbay::x11 {

/// A press that one of our grabs has caught. The grab is the server's active one from then
/// on and, unless it is of the whole keyboard, no key goes anywhere until it is answered.
struct KeyPress {
    KeyGrab key;
    /// The keyboard, where it was a grab of XInput 2.
    std::optional<xcb_input_device_id_t> device;
};

/// The press that the event tells of, if it does. The number is that of the server's XInput
/// extension.
[[nodiscard]] std::optional<KeyPress> keyPressOf(const xcb_generic_event_t &event,
                                                 std::uint8_t xinputOpcode);

/// Answers it: the key goes to the program in front, or nowhere, and the keyboard is
/// everybody's again.
void answer(xcb_connection_t *connection, const KeyPress &press, EventVerdict verdict);

}  // namespace kestrelbay::x11
