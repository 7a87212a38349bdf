#pragma once

namespace kestrelbay::wayland {

/// For the events of a listener that nobody wants to hear. One that is left out ends the program.
template <typename... Arguments>
void ignoreEvent(void * /*data*/, Arguments... /*arguments*/) {}

}  // namespace kestrelbay::wayland
