#include "desktop/gnome/GnomeSession.h"

#include <sys/stat.h>

#include <stdexcept>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>

#include "support/Poll.h"

namespace kestrelbay::desktop {

using testing::waitUntil;

namespace {

/// Qt's name for the connection, which only this process knows.
const auto kConnection = QStringLiteral("gnome-session");
constexpr const char *kExtension = "kestrelbay@kestrelbay.org";
/// Earlier ones read extensions of another format.
constexpr int kFirstOfModules = 45;

/// Where X servers have their sockets. The Shell makes it, too, but not so that it then takes it;
/// on a machine that was started by an init system it is there.
void makeSocketFolder() {
    constexpr const char *kFolder = "/tmp/.X11-unix";
    constexpr mode_t kForAllButOthersFiles = 01777;
    if (::mkdir(kFolder, kForAllButOthersFiles) == 0)
        ::chmod(kFolder, kForAllButOthersFiles);
}

}  // namespace

GnomeSession::GnomeSession(const QByteArray &settings) : WaylandSession(QStringLiteral("GNOME")) {
    setVariable(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("keyfile"));
    setVariable(QStringLiteral("LIBGL_ALWAYS_SOFTWARE"), QStringLiteral("1"));
    write(home().config(QStringLiteral("glib-2.0/settings/keyfile")), settings);
    installExtension();
    startBus();
    makeSocketFolder();
    // The Shell asks services of the system's, none of which has to be there.
    systemBus_ = startBusDaemon();
    setVariable(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), addressOf(*systemBus_));
    startShell();
}

GnomeSession::~GnomeSession() {
    dropShell();
    keys_.reset();
    systemBus_.reset();
}

void GnomeSession::installExtension() {
    const auto shell = startAsUser(QStringLiteral("gnome-shell"), {QStringLiteral("--version")});
    if (!shell->waitForExit())
        throw std::runtime_error("there is no GNOME Shell");
    // "GNOME Shell 43.9"
    const int version =
        QString::fromLatin1(shell->output()).section(u' ', 2).section(u'.', 0, 0).toInt();
    const auto format =
        version < kFirstOfModules ? QStringLiteral("imports/") : QStringLiteral("modules/");
    const auto from = QStringLiteral(KESTRELBAY_GNOME_SHELL "/") + format;
    const auto to =
        QStringLiteral(".local/share/gnome-shell/extensions/") + QLatin1String(kExtension) + u'/';
    for (const char *const file : {"extension.js", "metadata.json"})
        write(home().path(to + QLatin1String(file)), HomeFolder::read(from + QLatin1String(file)));
}

void GnomeSession::enableExtension(bool enabled) const {
    const auto name = QStringLiteral("org.gnome.Shell.Extensions");
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.Shell"), QStringLiteral("/org/gnome/Shell"), name,
        enabled ? QStringLiteral("EnableExtension") : QStringLiteral("DisableExtension"));
    message.setArguments({QString::fromLatin1(kExtension)});
    static_cast<void>(bus_->call(message));
}

void GnomeSession::connectToBus() {
    const ActingAsOrdinaryUser user;
    bus_ = QDBusConnection::connectToBus(
        environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")), kConnection);
    if (!bus_->isConnected())
        throw std::runtime_error("cannot connect to the session bus");
    script_.emplace(*bus_);
}

void GnomeSession::startShell() {
    connectToBus();
    startCompositor(QStringLiteral("gnome-shell"),
                    {QStringLiteral("--headless"), QStringLiteral("--unsafe-mode"),
                     QStringLiteral("--virtual-monitor"), QStringLiteral("1280x800")},
                    [this] { return isShellUp(); });
    for (const char *const variable : {"WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY"}) {
        const auto name = QString::fromLatin1(variable);
        setVariable(
            name,
            script_->evaluate(QStringLiteral("imports.gi.GLib.getenv('%1')").arg(name)).toString());
    }
    keyboard_.emplace(*bus_);
    startKeys();
}

bool GnomeSession::isShellUp() {
    // It begins with the overview, which has the keyboard.
    return script_->evaluate(QStringLiteral("Main.layoutManager._startingUp")) == false &&
           script_->evaluate(QStringLiteral("(Main.overview.hide(), Main.overview.visible)")) ==
               false;
}

void GnomeSession::startKeys() {
    keys_ = startAsUser(QStringLiteral("/usr/libexec/gsd-media-keys"), {});
    if (!waitUntil([&] {
            return bus_->interface()
                ->isServiceRegistered(QStringLiteral("org.gnome.SettingsDaemon.MediaKeys"))
                .value();
        }))
        throw std::runtime_error("gsd-media-keys did not start: " + keys_->output().toStdString());
}

void GnomeSession::dropShell() {
    keyboard_.reset();
    script_.reset();
    bus_.reset();
    QDBusConnection::disconnectFromBus(kConnection);
}

void GnomeSession::restartCompositor() {
    dropShell();
    keys_.reset();
    killCompositor();
    startShell();
}

void GnomeSession::screenshot(const QString &path) {
    const QString picture = home().path(QStringLiteral("screen.png"));
    const auto name = QStringLiteral("org.gnome.Shell.Screenshot");
    QDBusMessage shot = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.Shell"), QStringLiteral("/org/gnome/Shell/Screenshot"), name,
        QStringLiteral("Screenshot"));
    shot.setArguments({false, false, picture});
    static_cast<void>(bus_->call(shot));
    QFile::remove(path);
    QFile::copy(picture, path);
}

}  // namespace kestrelbay::desktop
