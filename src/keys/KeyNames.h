#pragma once

#include <QString>

#include "keys/KeyCode.h"

namespace kestrelbay {

/// What is printed on the key of a US keyboard, e.g. "T", "Space" or "⇥"; keys
/// of the numeric pad read like their counterparts. "Key(36)" for a key that has
/// no name here.
[[nodiscard]] QString keyName(KeyCode keyCode);

}  // namespace kestrelbay
