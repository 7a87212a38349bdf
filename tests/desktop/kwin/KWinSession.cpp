#include "desktop/kwin/KWinSession.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace kestrelbay::desktop {

namespace {

constexpr const char *kTwoDesktops = "[Desktops]\nNumber=2\nRows=1\n";

QByteArray programEntry(const QString &name, const QByteArray &command) {
    return "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() +
           "\nNoDisplay=true\nExec=" + command + '\n';
}

/// The path as a whole: a dollar is quoted twice or once, by what Plasma starts the program with.
QByteArray usersCommand(const QString &file) {
    return "sh -c \"echo pressed >>" + file.toUtf8() + '"';
}

/// Of the shortcut of a program with this entry.
QByteArray shortcutOf(const QString &entry, QChar letter) {
    return QStringLiteral("[%1.desktop]\n_k_friendly_name=%1\n_launch=Meta+%2,none,%1\n")
        .arg(entry, letter)
        .toUtf8();
}

/// The version from 6 on knows no other entries than those in a menu, which Plasma brings.
constexpr const char *kMenu =
    "<Menu><Name>Applications</Name><DefaultAppDirs/><Include><All/></Include></Menu>\n";

/// KWin lets a program use these only if such an entry has its path.
QByteArray permittingEntry(const QString &program, const QByteArray &interfaces) {
    return programEntry(QFileInfo(program).fileName(), program.toUtf8()) +
           "X-KDE-Wayland-Interfaces=" + interfaces + '\n';
}

}  // namespace

KWinSession::KWinSession(const KWinSetup &setup) : WaylandSession(QStringLiteral("KDE")) {
    setVariable(QStringLiteral("KDE_FULL_SESSION"), QStringLiteral("true"));
    // Without a graphics card.
    setVariable(QStringLiteral("KWIN_COMPOSE"), QStringLiteral("Q"));
    setVariable(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    setVariable(QStringLiteral("LIBGL_ALWAYS_SOFTWARE"), QStringLiteral("1"));

    write(home().config(QStringLiteral("menus/applications.menu")), kMenu);
    write(home().config(QStringLiteral("kwinrc")), kTwoDesktops);
    permit(copyOf(QStringLiteral(KESTRELBAY_KEYS_PROGRAM)), "org_kde_kwin_fake_input");
    for (const QString &program : setup.taskBars)
        permit(withinReach(program), "org_kde_plasma_window_management");
    std::vector<UsersShortcut> shortcuts = setup.shortcuts;
    shortcuts.push_back({.name = QStringLiteral("users-key"),
                         .letter = u'T',
                         .command = usersCommand(home().path(QLatin1String(kUsersKeyFile)))});
    QByteArray keys;
    for (const UsersShortcut &shortcut : shortcuts) {
        keys += shortcutOf(shortcut.name, shortcut.letter);
        writeEntry(shortcut.name, programEntry(shortcut.name, shortcut.command));
    }
    write(home().config(QStringLiteral("kglobalshortcutsrc")), keys);
    // The file manager is started by KestrelBay, and not by the bus. Portals, which toolkits wait
    // for, take seconds to find out that they cannot run.
    for (const char *const service :
         {"org.freedesktop.FileManager1", "org.freedesktop.portal.Desktop"})
        write(home().path(QStringLiteral(".local/share/dbus-1/services/%1.service")
                              .arg(QLatin1String(service))),
              QByteArray("[D-BUS Service]\nName=") + service + "\nExec=/bin/false\n");
    startBus();
    startKWin();
}

void KWinSession::writeEntry(const QString &name, const QByteArray &entry) {
    write(home().applicationPath(name + QStringLiteral(".desktop")), entry);
}

void KWinSession::permit(const QString &program, const QByteArray &interfaces) {
    writeEntry(QFileInfo(program).fileName(), permittingEntry(program, interfaces));
}

void KWinSession::startKWin() {
    // The installed one has a capability that an ordinary user's processes may not be let have;
    // copies have none.
    startCompositor(
        copyOf(QStandardPaths::findExecutable(QStringLiteral("kwin_wayland"))),
        {QStringLiteral("--virtual"), QStringLiteral("--width"), QStringLiteral("1280"),
         QStringLiteral("--height"), QStringLiteral("800"), QStringLiteral("--xwayland"),
         QStringLiteral("--no-lockscreen"), QStringLiteral("sh -c '%1'").arg(tellingEnvironment())},
        [this] { return QFile::exists(environmentFile()); });
    takeVariables({QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("DISPLAY"),
                   QStringLiteral("XAUTHORITY")});
    scripts_.emplace(*this);
    keyboard_.emplace(*this);
}

void KWinSession::restartCompositor() {
    keyboard_.reset();
    scripts_.reset();
    killCompositor();
    startKWin();
}

}  // namespace kestrelbay::desktop
