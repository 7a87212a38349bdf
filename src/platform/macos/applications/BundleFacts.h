#pragma once

#include <QString>

namespace kestrelbay {

/// Has the bundle at this path a place among the applications that a user chooses
/// from? Not when it works in the background, declares no icon, or is no bundle.
/// Reads its information dictionary afresh. Any thread.
[[nodiscard]] bool isBundleForUsers(const QString &path);

}  // namespace kestrelbay
