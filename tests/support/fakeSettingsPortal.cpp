// A settings portal to be started by a bus: fakeSettingsPortal COLOR-SCHEME, a number
// as FakeSettingsPortal has them. Runs until it is ended.

#include <QCoreApplication>

#include "support/FakeSettingsPortal.h"

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const kestrelbay::testing::FakeSettingsPortal portal(
        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
        QCoreApplication::arguments().value(1).toUInt());
    return QCoreApplication::exec();
}
