#include "platform/linux/bus/OwnBusConnection.h"

#include <atomic>

namespace kestrelbay {

namespace {

QDBusConnection connect() {
    static std::atomic<int> count = 0;
    const QString name = QStringLiteral("kestrelbay-%1").arg(++count);
    // libdbus looks for the address once.
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

}  // namespace

OwnBusConnection::OwnBusConnection() : connection_(connect()) {}

OwnBusConnection::~OwnBusConnection() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

}  // namespace kestrelbay
