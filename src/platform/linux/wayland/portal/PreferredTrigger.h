#pragma once

#include <map>

#include <QString>

#include "keys/Hotkey.h"

namespace kestrelbay::portal {

/// What XKB calls the symbols that the keys type by themselves, as far as that is known.
using SymbolNames = std::map<KeyCode, QString>;

/// The hotkey as portals write it, e.g. "CTRL+LOGO+Return", whatever side it names. Empty for a key
/// without a name.
[[nodiscard]] QString preferredTrigger(const Hotkey &hotkey, const SymbolNames &names);

}  // namespace kestrelbay::portal
