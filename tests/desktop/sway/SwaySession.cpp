#include "desktop/sway/SwaySession.h"

#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "desktop/session/OrdinaryUser.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

using testing::ChildProcess;
using testing::waitUntil;

namespace {

/// A screen, and what the rest of the session has to know.
constexpr const char *kConfiguration = R"(output * resolution 1280x800
xwayland enable
exec env -0 >"$HOME/sway.new" && mv "$HOME/sway.new" "$HOME/sway.environment"
)";

std::unique_ptr<ChildProcess> startAsUser(const QString &program, const QStringList &arguments,
                                          const QProcessEnvironment &environment,
                                          const QString &outputFile = {}) {
    const Command command = asOrdinaryUser(program, arguments);
    auto process =
        std::make_unique<ChildProcess>(command.program, command.arguments, environment, outputFile);
    if (!process->started())
        throw std::runtime_error("cannot start " + program.toStdString());
    return process;
}

}  // namespace

SwaySession::SwaySession(const QByteArray &configuration)
    : processes_(home_.path()), environment_(QProcessEnvironment::systemEnvironment()) {
    for (const char *const name : {"DISPLAY", "WAYLAND_DISPLAY", "SWAYSOCK", "I3SOCK",
                                   "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORM"})
        environment_.remove(QLatin1String(name));
    home_.addTo(environment_);
    environment_.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // No accessibility bus: toolkits would wait for it at every start.
    environment_.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    environment_.insert(QStringLiteral("GTK_A11Y"), QStringLiteral("none"));
    environment_.insert(QStringLiteral("GVFS_DISABLE_FUSE"), QStringLiteral("1"));
    environment_.insert(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("wayland"));
    environment_.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("sway"));
    environment_.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    environment_.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    environment_.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));

    HomeFolder::write(home_.config(QStringLiteral("sway/config")), kConfiguration + configuration);
    giveToOrdinaryUser(QFileInfo(home_.path()).path());
    startBus();
    startCompositor();
}

SwaySession::~SwaySession() {
    keyboard_.reset();
    ipc_.reset();
    programs_.clear();
    compositor_.reset();
    bus_.reset();
    processes_.killAll();
}

void SwaySession::startBus() {
    bus_ = startAsUser(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--print-address"),
                        QStringLiteral("--nofork"), QStringLiteral("--nopidfile")},
                       environment_);
    if (!waitUntil([&] { return bus_->output().contains('\n'); }))
        throw std::runtime_error("the session bus did not start");
    environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                        QString::fromLatin1(bus_->output().split('\n').first()));
}

void SwaySession::startCompositor() {
    const QString told = home_.path(QStringLiteral("sway.environment"));
    QFile::remove(told);
    compositor_ = startAsUser(QStringLiteral("sway"), {}, environment_);
    if (!waitUntil([&] { return QFile::exists(told) || !compositor_->isRunning(); }) ||
        !compositor_->isRunning())
        throw std::runtime_error("sway did not start: " + compositor_->output().toStdString());
    for (const QByteArray &variable : HomeFolder::read(told).split('\0')) {
        const QString text = QString::fromUtf8(variable);
        const QString name = text.section(u'=', 0, 0);
        if (name == u"WAYLAND_DISPLAY" || name == u"DISPLAY" || name == u"SWAYSOCK")
            environment_.insert(name, text.section(u'=', 1));
    }
    ipc_.emplace(environment_.value(QStringLiteral("SWAYSOCK")));
    keyboard_.emplace(QDir(environment_.value(QStringLiteral("XDG_RUNTIME_DIR")))
                          .filePath(environment_.value(QStringLiteral("WAYLAND_DISPLAY"))));
}

void SwaySession::write(const QString &path, const QByteArray &contents) {
    HomeFolder::write(path, contents);
    giveToOrdinaryUser(home_.path());
}

QString SwaySession::withinReach(const QString &program) const {
    if (ordinaryUserCanRun(program))
        return program;
    QString copy = home_.path(QFileInfo(program).fileName());
    if (!QFile::exists(copy) && !QFile::copy(program, copy))
        throw std::runtime_error("cannot copy " + program.toStdString());
    giveToOrdinaryUser(home_.path());
    return copy;
}

void SwaySession::start(const QString &program, const QStringList &arguments) {
    programs_.push_back(startAsUser(program, arguments, environment_, QProcess::nullDevice()));
}

void SwaySession::restartCompositor() {
    keyboard_.reset();
    ipc_.reset();
    compositor_->kill();
    (void)compositor_->waitForExit();
    startCompositor();
}

void SwaySession::screenshot(const QString &path) {
    const QString picture = home_.path(QStringLiteral("screen.png"));
    if (!startAsUser(QStringLiteral("grim"), {picture}, environment_)->waitForExit())
        return;
    QFile::remove(path);
    QFile::copy(picture, path);
}

}  // namespace kestrelbay::desktop
