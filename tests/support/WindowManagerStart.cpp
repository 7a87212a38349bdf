#include "support/WindowManagerStart.h"

#include <map>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kestrelbay::testing {

namespace {

constexpr const char *kOpenbox = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <desktops><number>4</number><popupTime>0</popupTime></desktops>
  <keyboard><keybind key="W-Tab"><action name="ToggleShowDesktop"/></keybind></keyboard>
</openbox_config>
)";

// By default it holds the Super keys themselves, and so every combination with them.
constexpr const char *kIcewm = R"(Win95Keys=0
ShowTaskBar=0
)";

constexpr const char *kFluxbox = R"(session.screen0.toolbar.visible: false
)";

// The anchor keeps the second workspace, which is there only while it has a window.
constexpr const char *kI3 = R"(# i3 config file (v4)
font pango:monospace 8
assign [class="^KestrelAnchor$"] → number 2
bindsym Mod4+Tab workspace back_and_forth
)";

constexpr const char *kKwin = R"([Compositing]
Enabled=false
[Desktops]
Number=4
)";

// Read by the back end of GSettings that is asked for below. mutter's overlay key is the left
// Super key, of which no other program hears while it is that.
constexpr const char *kGSettings = R"([org/gnome/mutter]
overlay-key=''
dynamic-workspaces=false
[org/gnome/desktop/wm/preferences]
num-workspaces=4
[org/mate/marco/global-keybindings]
show-desktop='<Mod4>Tab'
[org/cinnamon/desktop/wm/preferences]
num-workspaces=4
[org/cinnamon/muffin]
dynamic-workspaces=false
)";

struct Known {
    QStringList arguments;
    const char *file = nullptr;  ///< below the home folder
    const char *contents = nullptr;
    bool takesOver = true;
    const char *service = "";  ///< that it has its settings from
};

const std::map<QString, Known> &allKnown() {
    static const char *const gsettings = ".config/glib-2.0/settings/keyfile";
    static const QString smDisable = QStringLiteral("--sm-disable");
    static const QString onX11 = QStringLiteral("--x11");
    static const std::map<QString, Known> all{
        {QStringLiteral("fluxbox"), {{}, ".fluxbox/init", kFluxbox, false}},
        {QStringLiteral("i3"), {{QStringLiteral("-a")}, ".config/i3/config", kI3}},
        {QStringLiteral("icewm"), {{}, ".icewm/preferences", kIcewm}},
        {QStringLiteral("kwin_x11"), {{}, ".config/kwinrc", kKwin}},
        {QStringLiteral("marco"),
         {{smDisable, QStringLiteral("--no-composite")}, gsettings, kGSettings}},
        {QStringLiteral("metacity"),
         {{smDisable, QStringLiteral("--no-composite")}, gsettings, kGSettings}},
        {QStringLiteral("muffin"), {{smDisable, onX11}, gsettings, kGSettings}},
        {QStringLiteral("mutter"), {{smDisable, onX11}, gsettings, kGSettings}},
        {QStringLiteral("openbox"), {{smDisable}, ".config/openbox/rc.xml", kOpenbox}},
        {QStringLiteral("xfwm4"),
         {{QStringLiteral("--compositor=off"), QStringLiteral("--sm-client-disable")},
          nullptr,
          nullptr,
          true,
          "org.xfce.Xfconf"}},
    };
    return all;
}

void write(const QString &path, const char *contents) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) < 0)
        throw std::runtime_error("cannot write " + path.toStdString());
}

}  // namespace

const QStringList &knownWindowManagers() {
    static const QStringList names = [] {
        QStringList all;
        for (const auto &[name, known] : allKnown())
            all += name;
        return all;
    }();
    return names;
}

WindowManagerStart windowManagerStart(const QString &program, const QString &folder,
                                      WindowManagerKeys keys) {
    const auto known = allKnown().find(program);
    if (known == allKnown().end())
        throw std::runtime_error("no window manager is known as " + program.toStdString());
    const QDir home(folder);
    if (known->second.file != nullptr && keys == WindowManagerKeys::Free)
        write(home.filePath(QLatin1String(known->second.file)), known->second.contents);
    const QString runtime = home.filePath(QStringLiteral("run"));
    home.mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    WindowManagerStart start;
    start.arguments = known->second.arguments;
    start.service = QLatin1String(known->second.service);
    if (known->second.takesOver)
        start.takeover = QStringList{QStringLiteral("--replace")};
    const auto set = [&](const char *name, const QString &value) {
        start.environment.insert(QLatin1String(name), value);
    };
    set("HOME", folder);
    set("XDG_CONFIG_HOME", home.filePath(QStringLiteral(".config")));
    set("XDG_DATA_HOME", home.filePath(QStringLiteral(".local/share")));
    set("XDG_CACHE_HOME", home.filePath(QStringLiteral(".cache")));
    set("XDG_STATE_HOME", home.filePath(QStringLiteral(".local/state")));
    set("XDG_RUNTIME_DIR", runtime);
    // fluxbox has a script set its background, which opens a window when it finds no program
    // that can. This one always can.
    set("wpsetters", QStringLiteral("true"));
    set("GSETTINGS_BACKEND", QStringLiteral("keyfile"));
    return start;
}

}  // namespace kestrelbay::testing
