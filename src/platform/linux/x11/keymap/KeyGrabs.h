#pragma once

#include <array>
#include <cstdint>
#include <set>

#include <xcb/xproto.h>

#include "keys/Hotkey.h"
#include "platform/linux/keycodes/KeyCodeTable.h"

namespace kestrelbay::x11 {

/// What the X server says of the keyboard, as far as grabs depend on it. Modifiers are the
/// core protocol's eight (ShiftMask … Mod5Mask).
struct KeyboardModel {
    /// What each X key code may set: one entry for each different answer of its layouts
    /// and levels, and none for a key that never sets any.
    std::array<std::set<std::uint8_t>, 256> modifiersOfKey{};
    /// The modifiers that some key locks: Num Lock's, whatever else the layout has. Caps
    /// Lock's is always one of them, since it can be on without a key that sets it. A
    /// hotkey fires whatever their state.
    std::uint8_t lockModifiers = XCB_MOD_MASK_LOCK;
};

/// One passive grab.
struct KeyGrab {
    XKeycode keycode = 0;
    std::uint8_t modifiers = 0;

    auto operator<=>(const KeyGrab &) const = default;
};

/// The grabs under which a press of the hotkey arrives, and few others; empty when
/// this keyboard cannot produce it. There are at most 256, one for each state of the
/// modifiers.
[[nodiscard]] std::set<KeyGrab> grabsFor(const Hotkey &hotkey, const KeyboardModel &keyboard);

/// Can a key event with these modifiers, locks apart, come while exactly these modifier keys are
/// down?
[[nodiscard]] bool areExplained(std::uint8_t modifiers, const std::set<KeyCode> &held,
                                const KeyboardModel &keyboard);

/// Of a key event with these modifiers while these modifier keys are down: the left keys of
/// the kinds that no finger holds, as when the modifier is latched or locked by software, or
/// set by a key that is no modifier key here. Locks are no such modifiers.
[[nodiscard]] std::set<KeyCode> unheldModifiers(std::uint8_t modifiers,
                                                const std::set<KeyCode> &held,
                                                const KeyboardModel &keyboard);

}  // namespace kestrelbay::x11
