#pragma once

#include <array>
#include <cstdint>
#include <set>

#include "keys/Hotkey.h"
#include "platform/linux/x11/keyboard/KeyCodeTable.h"

namespace kestrelbay::x11 {

/// What the X server says of the keyboard, as far as grabs depend on it.
struct KeyboardModel {
    /// For each X key code the core modifiers (ShiftMask … Mod5Mask) it sets.
    std::array<std::uint8_t, 256> modifiersOfKey{};
    /// The modifiers that some key locks: Caps Lock's, Num Lock's, whatever else the
    /// layout has. A hotkey fires whatever their state.
    std::uint8_t lockModifiers = 0;
};

/// One passive grab.
struct KeyGrab {
    XKeycode keycode = 0;
    std::uint8_t modifiers = 0;

    auto operator<=>(const KeyGrab &) const = default;
};

/// The grabs under which a press of the hotkey arrives, and few others; empty when
/// this keyboard cannot produce it.
[[nodiscard]] std::set<KeyGrab> grabsFor(const Hotkey &hotkey, const KeyboardModel &keyboard);

}  // namespace kestrelbay::x11
