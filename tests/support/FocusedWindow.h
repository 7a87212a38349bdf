#pragma once

#include <cstdint>
#include <vector>

#include <QString>

#include "support/Xcb.h"

namespace kestrelbay::testing {

/// "The program in front" of an X server without a window manager: a window that
/// holds the input focus and remembers the keys that were pressed in it.
class FocusedWindow {
public:
    explicit FocusedWindow(const QString &displayName);

    /// Every key press so far.
    [[nodiscard]] const std::vector<std::uint8_t> &pressedKeys();
    /// Grabs a key combination for this client; false when another has it.
    [[nodiscard]] bool grabKey(std::uint8_t keycode, std::uint16_t modifiers);
    /// The same as mutter does it, by XInput 2; these and core grabs do not meet.
    [[nodiscard]] bool grabKeyByXInput(std::uint8_t keycode, std::uint32_t modifiers);
    void ungrabKey(std::uint8_t keycode, std::uint16_t modifiers);
    /// Grabs the whole keyboard; false when another client has it.
    [[nodiscard]] bool grabKeyboard();
    void ungrabKeyboard();
    /// Takes a selection from whoever has it.
    void ownSelection(const char *name);
    /// Sends MANAGER to the root as a starting window manager does.
    void announceWindowManager();

private:
    void sync();
    [[nodiscard]] xcb_atom_t atom(const char *name);

    Connection connection_;
    xcb_window_t root_;
    xcb_window_t window_;
    std::vector<std::uint8_t> pressed_;
};

}  // namespace kestrelbay::testing
