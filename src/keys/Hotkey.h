#pragma once

#include "keys/KeyCode.h"
#include "keys/ModifierFlags.h"

namespace kestrelbay {

/// A key pressed together with modifiers. Without side bits either side will do.
struct Hotkey {
    KeyCode keyCode{};
    ModifierFlags modifierFlags;

    auto operator<=>(const Hotkey &) const = default;  // NOLINT(modernize-use-nullptr)
};

}  // namespace kestrelbay
