#pragma once

#include <optional>

#include <QIcon>

namespace kestrelbay {

/// The icon among those of the programs that run: a bolt, struck through while the
/// shortcuts are disabled. Drawn afresh for every size. It is light on a dark
/// ground and the other way round, with a faint edge of the other colour, since
/// not every desktop tells what its ground is; without any `onDark` it is a mask
/// that the system tints.
[[nodiscard]] QIcon statusIcon(bool enabled, std::optional<bool> onDark);

}  // namespace kestrelbay
