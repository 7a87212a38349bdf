#pragma once

struct wl_display;

namespace kestrelbay::wayland {

/// The connection that the windows of this program are on. Null where they are X's, and with a Qt
/// that keeps it to itself, as those before 6.5 do.
[[nodiscard]] wl_display *qtDisplay();

}  // namespace kestrelbay::wayland
