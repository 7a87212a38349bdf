#include "platform/linux/bus/SessionBus.h"

#include <atomic>

namespace kestrelbay {

SessionBus::~SessionBus() {
    if (!name_.isEmpty())
        QDBusConnection::disconnectFromBus(name_);
}

QDBusConnection SessionBus::connection() {
    // Qt opens this one once and for all.
    QDBusConnection shared = QDBusConnection::sessionBus();
    if (shared.isConnected())
        return shared;
    const std::lock_guard lock(mutex_);
    if (!name_.isEmpty()) {
        QDBusConnection own(name_);
        if (own.isConnected())
            return own;
        QDBusConnection::disconnectFromBus(name_);
    }
    static std::atomic<int> count = 0;
    name_ = QStringLiteral("kestrelbay-%1").arg(++count);
    // libdbus looks for the address once as well.
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)
                             : QDBusConnection::connectToBus(address, name_);
}

}  // namespace kestrelbay
