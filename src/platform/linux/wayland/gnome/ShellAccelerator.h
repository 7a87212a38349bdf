#pragma once

#include <QString>

#include "keys/Hotkey.h"

namespace kestrelbay::gnome {

/// As GNOME Shell takes a key by its position, with its modifiers: "<Super><Shift>0x1c", whatever
/// side the hotkey names. Empty for a key that no keyboard of this system has.
[[nodiscard]] QString acceleratorOf(const Hotkey &hotkey);

}  // namespace kestrelbay::gnome
