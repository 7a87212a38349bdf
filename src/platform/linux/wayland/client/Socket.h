#pragma once

#include <QString>

namespace kestrelbay::wayland {

/// The path of a compositor's socket, by the name in WAYLAND_DISPLAY, which may be a path itself.
/// Empty without a name.
[[nodiscard]] QString socketPath(const QString &displayName);

/// A stream socket that is connected there and waits for nothing; the caller closes it. -1, with
/// the reason in errno, when nobody listens.
[[nodiscard]] int connectedSocket(const QString &path);

}  // namespace kestrelbay::wayland
