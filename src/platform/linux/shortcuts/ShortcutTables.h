#pragma once

#include <optional>

#include <QDBusConnection>
#include <QString>

#include "platform/HotkeyHolders.h"
#include "platform/linux/shortcuts/Accelerator.h"

namespace kestrelbay {

// What the desktops have bound, each in a table of its own. All are read as they are at
// the call, and a table that is not there holds nothing. Any thread.

enum class GSettingsDesktop { Gnome, Mate, Cinnamon };

/// A holder without a program is the window manager. Opens GIO's connection to the session
/// bus.
[[nodiscard]] std::optional<HotkeyHolder> holderInGSettings(GSettingsDesktop desktop,
                                                            const LookedForKey &key);

/// Asks xfconfd, if it runs, for at most 200 ms.
[[nodiscard]] std::optional<HotkeyHolder> holderInXfconf(QDBusConnection bus,
                                                         const LookedForKey &key);

/// `path` is that of kglobalshortcutsrc.
[[nodiscard]] std::optional<HotkeyHolder> holderInKdeFile(const QString &path,
                                                          const LookedForKey &key);

}  // namespace kestrelbay
