#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/linux/wayland/windows/Desktop.h"

namespace kestrelbay::wayland {

/// Windows are told of under new numbers on a new connection. Those of `now` that are windows of
/// `before`, in the order of the latter: by what they tell of themselves, at last by their
/// application alone.
[[nodiscard]] std::vector<std::int64_t> foundAgain(std::span<const DesktopWindow> before,
                                                   std::span<const DesktopWindow> now);

}  // namespace kestrelbay::wayland
