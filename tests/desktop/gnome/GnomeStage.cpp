#include "desktop/gnome/GnomeStage.h"

#include <utility>

#include <QByteArrayList>

namespace kestrelbay::desktop {

namespace {

constexpr std::chrono::milliseconds kDelay{400}, kInterval{40};

/// Of GNOME's own keys those are given up that rules want.
constexpr const char *kSettings = R"([org/gnome/shell]
enabled-extensions=['kestrelbay@kestrelbay.org']
welcome-dialog-last-shown-version='999'

[org/gnome/desktop/interface]
enable-animations=false

[org/gnome/desktop/wm/keybindings]
minimize=@as []

[org/gnome/shell/keybindings]
focus-active-notification=@as []
toggle-application-view=@as []
toggle-overview=@as []
toggle-quick-settings=@as []

[org/gnome/desktop/peripherals/keyboard]
delay=uint32 400
repeat-interval=uint32 40

[org/gnome/settings-daemon/plugins/media-keys]
rotate-video-lock-static=@as []
)";

constexpr const char *kShortcutsPath =
    "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/";

/// Ends what stands in their section already.
QByteArray customShortcuts(const std::vector<UsersShortcut> &shortcuts) {
    QByteArrayList paths;
    QByteArray sections;
    for (const UsersShortcut &shortcut : shortcuts) {
        const QByteArray path = kShortcutsPath + shortcut.name.toUtf8() + '/';
        paths.append('\'' + path + '\'');
        sections += "\n[" + path.sliced(1).chopped(1) + "]\nname='" + shortcut.name.toUtf8() +
                    "'\nbinding='<Super>" + QString(shortcut.letter.toLower()).toUtf8() +
                    "'\ncommand='" + shortcut.command + "'\n";
    }
    return "custom-keybindings=[" + paths.join(',') + "]\n" + sections;
}

QByteArray settings(std::vector<UsersShortcut> shortcuts) {
    shortcuts.push_back({.name = QStringLiteral("users"),
                         .letter = u'T',
                         .command = R"(sh -c "echo pressed >>~/users-key")"});
    return kSettings + customShortcuts(shortcuts);
}

}  // namespace

GnomeStage::GnomeStage(StageOptions options, std::vector<UsersShortcut> shortcuts)
    : WaylandStage(std::move(options), kCastOnWayland),
      session_(settings(std::move(shortcuts))),
      view_(session_) {
    furnish();
}

GnomeStage::~GnomeStage() {
    dropProgram();
}

int GnomeStage::usersPresses() {
    return static_cast<int>(
        HomeFolder::read(session_.home().path(QStringLiteral("users-key"))).count('\n'));
}

std::chrono::steady_clock::duration GnomeStage::timeToRepeat() {
    constexpr int kRepeats = 5;
    return kDelay + kRepeats * kInterval;
}

}  // namespace kestrelbay::desktop
