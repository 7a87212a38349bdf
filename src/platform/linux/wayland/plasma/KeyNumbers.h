#pragma once

#include <vector>

#include <xkbcommon/xkbcommon.h>

#include "keys/Hotkey.h"

namespace kestrelbay::plasma {

/// Plasma knows hotkeys by what the keys type: a Qt key together with Qt's modifiers, in one
/// number. These are all that a press of the hotkey may be to KWin in this layout of the keymap:
/// with Num Lock on and off, and in another alphabet than the Latin one with and without Control.
/// None where the key types nothing that Qt knows. Sides are not told.
[[nodiscard]] std::vector<int> keyNumbersOf(const Hotkey &hotkey, xkb_keymap &keymap,
                                            xkb_layout_index_t layout);

}  // namespace kestrelbay::plasma
