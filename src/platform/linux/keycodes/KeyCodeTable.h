#pragma once

#include <cstdint>
#include <optional>

#include "keys/KeyCode.h"

namespace kestrelbay {

/// A key code of X and XKB: the evdev code of the key plus 8, a position like KeyCode.
using XKeycode = std::uint8_t;

/// The same position in the other numbering; no value for a key that the other
/// numbering does not have.
[[nodiscard]] std::optional<XKeycode> toXKeycode(KeyCode code);
[[nodiscard]] std::optional<KeyCode> toKeyCode(XKeycode code);

}  // namespace kestrelbay
