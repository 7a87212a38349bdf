#pragma once

#include <cstdint>

#include <QString>

#include "support/Xcb.h"

namespace kestrelbay::testing {

/// Sets what no finger holds, as on-screen keyboards and accessibility settings do. Every
/// call has been processed by the X server when it returns. Modifiers are the core
/// protocol's: ShiftMask … Mod5Mask.
class KeyboardSettings {
public:
    /// Throws std::runtime_error when the server has no XKB.
    explicit KeyboardSettings(const QString &displayName);

    /// Until the next key that is no modifier.
    void latch(std::uint8_t modifiers);
    /// These and no others, until the next call.
    void lock(std::uint8_t modifiers);
    /// A modifier key counts until the key after it is pressed.
    void turnStickyKeysOn();
    /// This one of the keymap's layouts, by its place among them.
    void useLayout(std::uint8_t index);
    /// Rewrites that many times what is printed on a key nobody has, each of which
    /// the server tells to every client.
    void changeMapping(int times);

private:
    void sync();

    Connection connection_;
};

}  // namespace kestrelbay::testing
