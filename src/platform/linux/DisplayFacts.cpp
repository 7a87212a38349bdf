#include "platform/linux/DisplayFacts.h"

#include <algorithm>

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

#include <unistd.h>

#include "platform/linux/wayland/client/Socket.h"
#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay {

namespace {

bool doesWaylandAnswer(const QString &name) {
    const int socket = wayland::connectedSocket(wayland::socketPath(name));
    if (socket >= 0)
        ::close(socket);
    return socket >= 0;
}

bool hasQtWaylandPlugin() {
    return std::ranges::any_of(QCoreApplication::libraryPaths(), [](const QString &folder) {
        return !QDir(folder + QStringLiteral("/platforms"))
                    .entryList({QStringLiteral("libqwayland*.so")}, QDir::Files)
                    .isEmpty();
    });
}

}  // namespace

DisplayFacts readDisplayFacts() {
    DisplayFacts facts{
        .xName = qEnvironmentVariable("DISPLAY"),
        .waylandName = qEnvironmentVariable("WAYLAND_DISPLAY"),
        .isQtPlatformNamed = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"),
    };
    facts.isWaylandSession =
        !facts.waylandName.isEmpty() || qEnvironmentVariable("XDG_SESSION_TYPE") == u"wayland";
    facts.doesXAnswer = !facts.xName.isEmpty() && x11::XConnection(facts.xName).isUsable();
    if (!facts.doesXAnswer) {
        facts.doesWaylandAnswer = doesWaylandAnswer(facts.waylandName);
        facts.hasQtWaylandPlugin = hasQtWaylandPlugin();
    }
    return facts;
}

QString displayProblem(const DisplayFacts &facts) {
    if (facts.doesXAnswer)
        return {};
    if (facts.doesWaylandAnswer)
        return facts.hasQtWaylandPlugin || facts.isQtPlatformNamed
                   ? QString()
                   : QStringLiteral(
                         "no X server answers, and Qt has no plugin for Wayland "
                         "(Debian: qt6-wayland)");
    if (facts.xName.isEmpty() && facts.waylandName.isEmpty())
        return QStringLiteral(
            "there is no display to work with (neither DISPLAY nor WAYLAND_DISPLAY is set)");
    if (facts.waylandName.isEmpty())
        return QStringLiteral("the X server %1 does not answer").arg(facts.xName);
    if (facts.xName.isEmpty())
        return QStringLiteral("the Wayland compositor %1 does not answer").arg(facts.waylandName);
    return QStringLiteral("neither the X server %1 nor the Wayland compositor %2 answers")
        .arg(facts.xName, facts.waylandName);
}

QString qtPlatformFor(const DisplayFacts &facts) {
    if (!facts.isWaylandSession || facts.isQtPlatformNamed)
        return {};
    return facts.doesXAnswer ? QStringLiteral("xcb") : QStringLiteral("wayland");
}

}  // namespace kestrelbay
