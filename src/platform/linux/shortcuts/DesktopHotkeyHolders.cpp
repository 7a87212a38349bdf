#include "platform/linux/shortcuts/DesktopHotkeyHolders.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include <QDir>
#include <QStringList>

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/keycodes/KeyCodeTable.h"
#include "platform/linux/shortcuts/ShortcutTables.h"
#include "platform/linux/wayland/sway/UserConfiguration.h"
#include "platform/linux/x11/connection/DisplayDiagnostics.h"
#include "platform/linux/x11/connection/XConnection.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

enum class Desktop { Unknown, Gnome, Mate, Cinnamon, Xfce, Kde };

struct DesktopName {
    QLatin1StringView name;
    Desktop desktop;
};

/// Of desktops, as XDG_CURRENT_DESKTOP lists them, and of window managers.
constexpr std::array kNames{
    DesktopName{QLatin1StringView("GNOME"), Desktop::Gnome},
    DesktopName{QLatin1StringView("Unity"), Desktop::Gnome},
    DesktopName{QLatin1StringView("MATE"), Desktop::Mate},
    DesktopName{QLatin1StringView("X-Cinnamon"), Desktop::Cinnamon},
    DesktopName{QLatin1StringView("Cinnamon"), Desktop::Cinnamon},
    DesktopName{QLatin1StringView("XFCE"), Desktop::Xfce},
    DesktopName{QLatin1StringView("KDE"), Desktop::Kde},
    DesktopName{QLatin1StringView("GNOME Shell"), Desktop::Gnome},
    DesktopName{QLatin1StringView("Mutter"), Desktop::Gnome},
    DesktopName{QLatin1StringView("Metacity"), Desktop::Gnome},
    DesktopName{QLatin1StringView("Metacity (Marco)"), Desktop::Mate},
    DesktopName{QLatin1StringView("Mutter (Muffin)"), Desktop::Cinnamon},
    DesktopName{QLatin1StringView("Xfwm4"), Desktop::Xfce},
    DesktopName{QLatin1StringView("KWin"), Desktop::Kde},
};

/// The first one that is known.
Desktop desktopCalled(const QStringList &names) {
    for (const QString &name : names) {
        const auto *const found = std::ranges::find(kNames, name, &DesktopName::name);
        if (found != kNames.end())
            return found->desktop;
    }
    return Desktop::Unknown;
}

std::vector<Keysym> keysymsOn(const x11::XConnection &connection, KeyCode keyCode) {
    const std::optional<XKeycode> keycode = toXKeycode(keyCode);
    if (!keycode || !connection.isUsable())
        return {};
    const x11::Reply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection.get(), xcb_get_keyboard_mapping(connection.get(), *keycode, 1), nullptr));
    std::vector<Keysym> keysyms;
    for (int i = 0; reply && i < xcb_get_keyboard_mapping_keysyms_length(reply.get()); ++i)
        keysyms.push_back(xkb_keysym_to_lower(xcb_get_keyboard_mapping_keysyms(reply.get())[i]));
    return keysyms;
}

/// Window managers that hold modifier keys by settings that are in no table.
HotkeyHolder holderOfModifier(const QString &windowManager) {
    if (windowManager.startsWith("IceWM"_L1))
        return {.program = u"IceWM"_s, .remedy = u"~/.icewm/preferences: Win95Keys=0"_s};
    return {.program = windowManager};
}

}  // namespace

DesktopHotkeyHolders::DesktopHotkeyHolders(Settings settings, SessionBus &bus)
    : settings_(std::move(settings)), bus_(bus) {}

HotkeyHolder DesktopHotkeyHolders::holderOf(const RefusedHotkey &refused) {
    if (!settings_.swaySocket.isEmpty()) {
        if (auto holder = sway::holderInConfiguration(settings_.swaySocket, refused.hotkey))
            return *holder;
    }
    const x11::XConnection connection(settings_.displayName);
    const QString windowManager = x11::windowManagerName(connection).value_or(QString());
    LookedForKey key{.modifiers = refused.hotkey.modifierFlags & modifier::kGenericMask,
                     .keysyms = keysymsOn(connection, refused.hotkey.keyCode)};
    if (refused.modifierKey)
        key = {.modifiers = {}, .keysyms = keysymsOn(connection, *refused.modifierKey)};

    std::optional<HotkeyHolder> holder;
    switch (desktopCalled(settings_.desktop.split(u':') + QStringList{windowManager})) {
        case Desktop::Gnome:
            gioBus_.keep();
            holder = holderInGSettings(GSettingsDesktop::Gnome, key);
            break;
        case Desktop::Mate:
            gioBus_.keep();
            holder = holderInGSettings(GSettingsDesktop::Mate, key);
            break;
        case Desktop::Cinnamon:
            gioBus_.keep();
            holder = holderInGSettings(GSettingsDesktop::Cinnamon, key);
            break;
        case Desktop::Xfce:
            holder = holderInXfconf(bus_.connection(), key);
            break;
        case Desktop::Kde:
            holder = holderInKdeFile(QDir(settings_.configFolder).filePath(u"kglobalshortcutsrc"_s),
                                     key);
            break;
        case Desktop::Unknown:
            break;
    }
    if (!holder)
        return refused.modifierKey ? holderOfModifier(windowManager) : HotkeyHolder();
    if (holder->program.isEmpty())
        holder->program = windowManager;
    return *holder;
}

}  // namespace kestrelbay
