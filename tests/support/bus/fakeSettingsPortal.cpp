// A settings portal to be started by a bus: fakeSettingsPortal COLOR-SCHEME, a number
// as FakeSettingsPortal has them. Ends with the bus.

#include <QCoreApplication>
#include <QDBusConnection>

#include "support/bus/FakeSettingsPortal.h"

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const kestrelbay::testing::FakeSettingsPortal portal(
        address, QCoreApplication::arguments().value(1).toUInt());
    QDBusConnection bus = QDBusConnection::connectToBus(address, QStringLiteral("end"));
    if (!bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                     QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                     QCoreApplication::instance(), SLOT(quit())))
        return EXIT_FAILURE;
    return QCoreApplication::exec();
}
