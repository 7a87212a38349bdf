#pragma once

#include <array>
#include <cstdint>
#include <set>

#include "keys/Hotkey.h"
#include "platform/linux/x11/connection/XConnection.h"
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

/// The passive, synchronous key grabs of one connection, on every root window.
/// The server gives a combination to one client only, so each request is checked.
class KeyGrabber {
public:
    /// The connection has to outlive it.
    explicit KeyGrabber(const XConnection &connection) : connection_(connection) {}

    /// Makes the wanted grabs the only ones. New ones are asked for before old
    /// ones are let go, so a hotkey wanted before and after is held throughout;
    /// those refused so far are asked for again.
    void apply(const std::set<KeyGrab> &wanted);

    /// The wanted grabs that another client holds on some root window.
    [[nodiscard]] const std::set<KeyGrab> &refused() const { return refused_; }

private:
    [[nodiscard]] std::set<KeyGrab> request(const std::set<KeyGrab> &grabs);
    void release(const std::set<KeyGrab> &grabs);

    const XConnection &connection_;
    std::set<KeyGrab> wanted_;
    std::set<KeyGrab> refused_;
};

}  // namespace kestrelbay::x11
