#pragma once

#include <map>

#include <QString>

#include <xkbcommon/xkbcommon.h>

#include "keys/KeyCode.h"

namespace kestrelbay::x11 {

/// What one of the keymap's layouts prints on the keys that type characters, as keyCap() has it.
/// A dead key is called by the accent that it types.
[[nodiscard]] std::map<KeyCode, QString> keyCaps(xkb_keymap &keymap, xkb_layout_index_t layout);

/// What XKB calls the symbols that the keys type by themselves, e.g. "t" or "Return".
[[nodiscard]] std::map<KeyCode, QString> symbolNames(xkb_keymap &keymap, xkb_layout_index_t layout);

}  // namespace kestrelbay::x11
