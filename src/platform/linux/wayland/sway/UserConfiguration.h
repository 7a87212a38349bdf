#pragma once

#include <optional>

#include <QString>

#include "platform/HotkeyHolders.h"
#include "platform/linux/wayland/sway/SwayConfiguration.h"
#include "platform/linux/wayland/sway/SwayIpc.h"

namespace kestrelbay::sway {

/// The user's configuration as sway has loaded it, with what it includes as it is now. None when
/// sway does not answer.
[[nodiscard]] std::optional<SwayConfiguration> readUserConfiguration(SwayIpc &ipc);

/// Who has the hotkey there; none where nobody has it. Any thread.
[[nodiscard]] std::optional<HotkeyHolder> holderInConfiguration(const QString &socketPath,
                                                                const Hotkey &hotkey);

/// What of it cannot be read, as words for a report; empty where that is nothing.
[[nodiscard]] QString unreadInConfiguration(const QString &socketPath);

}  // namespace kestrelbay::sway
