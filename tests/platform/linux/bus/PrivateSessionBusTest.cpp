#include "support/bus/PrivateSessionBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"

namespace kestrelbay::testing {
namespace {

using ::testing::ElementsAre;

TEST(PrivateSessionBusTest, StartsNothingThatIsInstalled) {
    const PrivateSessionBus bus;
    const QDBusConnection connection =
        QDBusConnection::connectToBus(bus.address(), QStringLiteral("visitor"));
    EXPECT_THAT(connection.interface()->activatableServiceNames().value(),
                ElementsAre(QStringLiteral("org.freedesktop.DBus")));
    QDBusConnection::disconnectFromBus(connection.name());
}

}  // namespace
}  // namespace kestrelbay::testing
