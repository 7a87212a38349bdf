#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include <QString>

namespace kestrelbay {

/// A virtual key code: the position of a key on the keyboard, whatever the
/// layout prints on it. The numbers are those macOS delivers in a keyboard
/// event's key-code field; every back end translates its own numbers to these.
enum class KeyCode : std::uint16_t {};

constexpr std::uint16_t toNumber(KeyCode code) {
    return static_cast<std::uint16_t>(code);
}

/// Named key codes that the program itself speaks of.
namespace key {
inline constexpr KeyCode kA{0};
inline constexpr KeyCode kDelete{51};
inline constexpr KeyCode kEscape{53};
inline constexpr KeyCode kRightCommand{54};
inline constexpr KeyCode kLeftCommand{55};
inline constexpr KeyCode kLeftShift{56};
inline constexpr KeyCode kLeftOption{58};
inline constexpr KeyCode kLeftControl{59};
inline constexpr KeyCode kRightShift{60};
inline constexpr KeyCode kRightOption{61};
inline constexpr KeyCode kRightControl{62};
}  // namespace key

/// The eight keys that count as modifiers. Caps Lock (57) and Fn (63) do not.
inline constexpr std::array<KeyCode, 8> kModifierKeyCodes{
    key::kLeftCommand, key::kRightCommand, key::kLeftShift,   key::kRightShift,
    key::kLeftOption,  key::kRightOption,  key::kLeftControl, key::kRightControl,
};

constexpr bool isModifierKeyCode(KeyCode code) {
    return std::ranges::find(kModifierKeyCodes, code) != kModifierKeyCodes.end();
}

/// What is printed on the key of a US keyboard, e.g. "T", "Space" or "⇥"; keys
/// of the numeric pad read like their counterparts. "Key(36)" for a key that has
/// no name here.
[[nodiscard]] QString keyName(KeyCode keyCode);

}  // namespace kestrelbay
