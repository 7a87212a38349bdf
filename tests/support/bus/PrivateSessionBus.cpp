#include "support/bus/PrivateSessionBus.h"

#include <stdexcept>

#include <QDir>
#include <QFile>

#include "support/Poll.h"

namespace kestrelbay::testing {

namespace {

QProcessEnvironment environmentIn(const QString &folder) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        environment.insert(QLatin1String(name), folder);
    return environment;
}

}  // namespace

PrivateSessionBus::PrivateSessionBus() {
    start(environmentIn(folder_.path()));
}

PrivateSessionBus::PrivateSessionBus(const QProcessEnvironment &environment) {
    start(environment);
}

void PrivateSessionBus::start(const QProcessEnvironment &environment) {
    QDir().mkpath(serviceFolder());
    QFile config(folder_.filePath(QStringLiteral("bus.conf")));
    if (!config.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write");
    // The configuration of the system would have it start whatever is installed.
    config.write("<busconfig><type>session</type><listen>unix:dir=" + folder_.path().toUtf8() +
                 "</listen><servicedir>" + serviceFolder().toUtf8() +
                 "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
                 "<allow receive_sender=\"*\"/>"
                 "<allow own=\"*\"/></policy></busconfig>");
    config.close();
    process_ = std::make_unique<ChildProcess>(
        QStringLiteral("dbus-daemon"),
        QStringList{QStringLiteral("--config-file=") + config.fileName(),
                    QStringLiteral("--nofork"), QStringLiteral("--print-address")},
        environment);
    if (!waitUntil([this] { return process_->output().endsWith('\n'); }))
        throw std::runtime_error("no session bus");
    // The bus complains on the same stream about what it does not find.
    for (const QByteArray &line : process_->output().split('\n'))
        if (line.startsWith("unix:"))
            address_ = QString::fromLatin1(line);
}

void PrivateSessionBus::offer(const QString &service) const {
    const QString name = service + QStringLiteral(".service");
    QFile::link(QStringLiteral("/usr/share/dbus-1/services/") + name,
                serviceFolder() + u'/' + name);
}

}  // namespace kestrelbay::testing
