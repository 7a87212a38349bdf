#include "desktop/session/WaylandSession.h"

#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include "support/Poll.h"

namespace kestrelbay::desktop {

using testing::ChildProcess;
using testing::waitUntil;

namespace {

/// The usual one. We may look on, too, if we are root.
constexpr const char *kBusConfiguration =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
    "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <include>/usr/share/dbus-1/session.conf</include>
  <policy context="mandatory"><allow user="root"/></policy>
</busconfig>
)";

}  // namespace

WaylandSession::WaylandSession(const QString &desktop)
    : processes_(home_.path()), environment_(QProcessEnvironment::systemEnvironment()) {
    for (const char *const name : {"DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "I3SOCK",
                                   "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORM"})
        environment_.remove(QLatin1String(name));
    home_.addTo(environment_);
    setVariable(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("wayland"));
    setVariable(QStringLiteral("XDG_CURRENT_DESKTOP"), desktop);
    giveToOrdinaryUser(QFileInfo(home_.path()).path());
}

WaylandSession::~WaylandSession() {
    programs_.clear();
    compositor_.reset();
    bus_.reset();
    processes_.killAll();
}

void WaylandSession::setVariable(const QString &name, const QString &value) {
    environment_.insert(name, value);
}

std::unique_ptr<ChildProcess> WaylandSession::startAsUser(const QString &program,
                                                          const QStringList &arguments,
                                                          const QString &outputFile) const {
    const Command started = command(program, arguments);
    auto process = std::make_unique<ChildProcess>(started.program, started.arguments, environment_,
                                                  outputFile);
    if (!process->started())
        throw std::runtime_error("cannot start " + program.toStdString());
    return process;
}

std::unique_ptr<ChildProcess> WaylandSession::startBusDaemon() {
    const QString configuration = home_.path(QStringLiteral("bus.conf"));
    write(configuration, kBusConfiguration);
    auto bus = startAsUser(
        QStringLiteral("dbus-daemon"),
        {QStringLiteral("--config-file=") + configuration, QStringLiteral("--print-address"),
         QStringLiteral("--nofork"), QStringLiteral("--nopidfile")});
    if (!waitUntil([&] { return bus->output().contains('\n'); }))
        throw std::runtime_error("a bus did not start");
    return bus;
}

QString WaylandSession::addressOf(ChildProcess &busDaemon) {
    return QString::fromLatin1(busDaemon.output().split('\n').first());
}

void WaylandSession::startBus() {
    bus_ = startBusDaemon();
    setVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), addressOf(*bus_));
}

void WaylandSession::startCompositor(const QString &program, const QStringList &arguments,
                                     const std::function<bool()> &isUp) {
    QFile::remove(environmentFile());
    compositor_ = startAsUser(program, arguments);
    if (!waitUntil([&] { return isUp() || !compositor_->isRunning(); }) ||
        !compositor_->isRunning())
        throw std::runtime_error(program.toStdString() +
                                 " did not start: " + compositor_->output().toStdString());
}

XClient &WaylandSession::x() {
    if (!x_) {
        // It takes nobody but its own user, where the tests run as root.
        const auto letting = startAsUser(QStringLiteral("xhost"),
                                         {QStringLiteral("+si:localuser:#%1").arg(::geteuid())},
                                         QProcess::nullDevice());
        (void)letting->waitForExit();
        x_.emplace(environment().value(QStringLiteral("DISPLAY")));
    }
    return *x_;
}

void WaylandSession::killCompositor() {
    x_.reset();
    compositor_->kill();
    (void)compositor_->waitForExit();
}

QString WaylandSession::tellingEnvironment() {
    return QStringLiteral(R"(env -0 >"$HOME/session.new" && )"
                          R"(mv "$HOME/session.new" "$HOME/session.environment")");
}

QString WaylandSession::environmentFile() const {
    return home_.path(QStringLiteral("session.environment"));
}

void WaylandSession::takeVariables(const QStringList &names) {
    for (const QByteArray &variable : HomeFolder::read(environmentFile()).split('\0')) {
        const QString text = QString::fromUtf8(variable);
        const QString name = text.section(u'=', 0, 0);
        if (names.contains(name))
            setVariable(name, text.section(u'=', 1));
    }
}

QString WaylandSession::socket() const {
    return QDir(environment_.value(QStringLiteral("XDG_RUNTIME_DIR")))
        .filePath(environment_.value(QStringLiteral("WAYLAND_DISPLAY")));
}

void WaylandSession::write(const QString &path, const QByteArray &contents) {
    HomeFolder::write(path, contents);
    giveToOrdinaryUser(home_.path());
}

QString WaylandSession::withinReach(const QString &program) const {
    return ordinaryUserCanRun(program) ? program : copyOf(program);
}

QString WaylandSession::copyOf(const QString &program) const {
    QString copy = home_.path(QFileInfo(program).fileName());
    if (!QFile::exists(copy) && !QFile::copy(program, copy))
        throw std::runtime_error("cannot copy " + program.toStdString());
    giveToOrdinaryUser(home_.path());
    return copy;
}

void WaylandSession::start(const QString &program, const QStringList &arguments) {
    programs_.push_back(startAsUser(program, arguments, QProcess::nullDevice()));
}

}  // namespace kestrelbay::desktop
