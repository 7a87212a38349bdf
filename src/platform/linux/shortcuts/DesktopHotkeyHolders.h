#pragma once

#include <QString>

#include "platform/HotkeyHolders.h"
#include "platform/linux/glib/GioBus.h"

namespace kestrelbay {

class SessionBus;

/// Looks for a hotkey in sway's configuration, and in the tables of the desktop that runs, by its
/// name and by that of its window manager, and for one that is held by its modifier, for that key
/// alone. Where a modifier is held and no table says so it is the window manager.
class DesktopHotkeyHolders final : public HotkeyHolders {
public:
    struct Settings {
        QString displayName;
        /// XDG_CURRENT_DESKTOP.
        QString desktop;
        /// $SWAYSOCK; empty outside sway.
        QString swaySocket = {};
        /// Where KDE keeps its settings; $XDG_CONFIG_HOME.
        QString configFolder;
    };

    /// The bus has to outlive it.
    DesktopHotkeyHolders(Settings settings, SessionBus &bus);

    [[nodiscard]] HotkeyHolder holderOf(const RefusedHotkey &refused) override;

private:
    const Settings settings_;
    SessionBus &bus_;
    GioBus gioBus_;
};

}  // namespace kestrelbay
