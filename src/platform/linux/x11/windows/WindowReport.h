#pragma once

#include <utility>
#include <vector>

#include <QString>

#include "platform/linux/x11/windows/WindowTracker.h"

namespace kestrelbay::x11 {

/// What a report of a problem has to say of windows: of each a name, what it tells of itself, the
/// entries that it was taken for and why. No titles, which are the user's affair.
[[nodiscard]] std::vector<std::pair<QString, QString>> describeWindows(
    const DesktopPicture &picture);

}  // namespace kestrelbay::x11
