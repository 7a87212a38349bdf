#pragma once

#include <optional>

#include <xkbcommon/xkbcommon.h>

namespace kestrelbay::plasma {

/// The key of Qt's that a key event with this symbol has, as KWin makes it; none for a symbol that
/// Qt has no key for.
[[nodiscard]] std::optional<int> qtKeyOf(xkb_keysym_t symbol);

}  // namespace kestrelbay::plasma
