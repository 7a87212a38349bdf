#pragma once

#include <cstdint>
#include <optional>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// Is a colour nearer to white than to black? Of 16 bits each.
[[nodiscard]] bool isLight(std::uint32_t red, std::uint32_t green, std::uint32_t blue);

/// Is most of the panel dark that a tray belongs to, by what is painted there? The panel is a
/// dock of the program whose window owns the tray. None when there is no such window in view,
/// or when one sees through it. Takes a few round trips. Any thread.
[[nodiscard]] std::optional<bool> isPanelDark(const XConnection &connection, xcb_window_t tray);

}  // namespace kestrelbay::x11
