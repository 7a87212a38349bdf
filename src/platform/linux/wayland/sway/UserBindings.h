#pragma once

#include <map>

#include <QByteArray>

#include "platform/linux/wayland/sway/SwayBinding.h"
#include "platform/linux/wayland/sway/SwayConfiguration.h"

namespace kestrelbay::sway {

/// What bindings run, by where they are on the keyboard.
using UserBindings = std::map<Position, QByteArray>;

/// Those of a configuration, in each of its layouts. Those of several keys, which are not
/// modifiers, are left out, and so are buttons of a mouse.
[[nodiscard]] UserBindings userBindings(const SwayConfiguration &configuration);

}  // namespace kestrelbay::sway
