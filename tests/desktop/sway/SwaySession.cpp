#include "desktop/sway/SwaySession.h"

#include <QFile>

namespace kestrelbay::desktop {

namespace {

/// A screen, and what the rest of the session has to know.
QByteArray commonConfiguration(const QString &tellingEnvironment) {
    return "output * resolution 1280x800\n"
           "xwayland enable\n"
           "exec " +
           tellingEnvironment.toUtf8() + '\n';
}

}  // namespace

SwaySession::SwaySession(const QByteArray &configuration) : WaylandSession(QStringLiteral("sway")) {
    setVariable(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    setVariable(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    setVariable(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    write(home().config(QStringLiteral("sway/config")),
          commonConfiguration(tellingEnvironment()) + configuration);
    startBus();
    startSway();
}

void SwaySession::startSway() {
    startCompositor(QStringLiteral("sway"), {},
                    [this] { return QFile::exists(environmentFile()); });
    takeVariables(
        {QStringLiteral("WAYLAND_DISPLAY"), QStringLiteral("DISPLAY"), QStringLiteral("SWAYSOCK")});
    ipc_.emplace(environment().value(QStringLiteral("SWAYSOCK")));
    keyboard_.emplace(socket());
}

void SwaySession::restartCompositor() {
    keyboard_.reset();
    ipc_.reset();
    killCompositor();
    startSway();
}

void SwaySession::screenshot(const QString &path) {
    const QString picture = home().path(QStringLiteral("screen.png"));
    if (!startAsUser(QStringLiteral("grim"), {picture})->waitForExit())
        return;
    QFile::remove(path);
    QFile::copy(picture, path);
}

}  // namespace kestrelbay::desktop
