#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/linux/x11/windows/WindowMirror.h"

namespace kestrelbay::x11 {

/// The windows of one application.
struct ApplicationGroup {
    /// Index into the entries of the picture's index; none when no entry fits.
    std::optional<std::size_t> entry;
    /// The process of its front-most window; below 1 when that is on another
    /// machine.
    std::int64_t pid = 0;
    bool active = false;
    /// Indices into the picture's windows, front-most first.
    std::vector<std::size_t> windows;
};

/// Groups the windows of a picture. A window that several entries claim is in the
/// group of each; one that none claims is grouped with its process, or with its
/// class; one that tells nothing at all is in none. The group of the front-most
/// window comes first, and so on; among the entries of one window, the one of
/// highest precedence.
[[nodiscard]] std::vector<ApplicationGroup> groupApplications(const DesktopPicture &picture);

}  // namespace kestrelbay::x11
