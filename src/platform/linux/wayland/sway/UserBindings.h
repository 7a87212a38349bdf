#pragma once

#include <set>

#include "platform/linux/wayland/sway/SwayBinding.h"
#include "platform/linux/wayland/sway/SwayConfiguration.h"

namespace kestrelbay::sway {

/// Where on the keyboard the bindings of a configuration are, in each of its layouts. Those of
/// several keys, which are not modifiers, are left out, and so are buttons of a mouse.
[[nodiscard]] std::set<Position> positionsOf(const SwayConfiguration &configuration);

}  // namespace kestrelbay::sway
