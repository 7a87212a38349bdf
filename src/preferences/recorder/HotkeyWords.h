#pragma once

#include <QString>

#include "keys/KeyCode.h"
#include "keys/ModifierFlags.h"

namespace kestrelbay {

/// The modifiers as they are spoken, e.g. "right Shift, left Command"; empty for none.
[[nodiscard]] QString modifiersInWords(ModifierFlags flags);

/// The hotkey as it is spoken, e.g. "left Command, T". Names the key A, which is not
/// shown. "none" where no hotkey is set.
[[nodiscard]] QString hotkeyInWords(KeyCode keyCode, ModifierFlags flags);

}  // namespace kestrelbay
