#include "platform/linux/bus/SessionBus.h"

#include <QDBusConnectionInterface>

#include <gtest/gtest.h>

#include "support/Poll.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::testing {
namespace {

/// Sets the address of the session bus, for the time of a test.
class SessionBusTest : public ::testing::Test {
protected:
    ~SessionBusTest() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    static void use(const PrivateSessionBus &bus) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    }
    static bool isOnTheBus(const QDBusConnection &connection) {
        return connection.isConnected() &&
               connection.interface()->isServiceRegistered(connection.baseService());
    }
};

TEST_F(SessionBusTest, FindsTheBusThatComesAfterOneThatDied) {
    SessionBus sessionBus;
    for (int i = 0; i < 3; ++i) {
        PrivateSessionBus bus;
        use(bus);
        EXPECT_TRUE(isOnTheBus(sessionBus.connection()));
        const QDBusConnection old = sessionBus.connection();
        bus.process().kill();
        EXPECT_TRUE(waitUntil([&] { return !old.isConnected(); }));
        EXPECT_FALSE(sessionBus.connection().isConnected());
    }
}

TEST_F(SessionBusTest, KeepsTheConnectionThatIsAlive) {
    SessionBus sessionBus;
    const PrivateSessionBus bus;
    use(bus);
    const QString name = sessionBus.connection().baseService();
    EXPECT_FALSE(name.isEmpty());
    EXPECT_EQ(sessionBus.connection().baseService(), name);
}

TEST_F(SessionBusTest, IsNotConnectedWithoutABus) {
    SessionBus sessionBus;
    for (const char *address : {"", "nonsense", "unix:path=/nonexistent/bus"}) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        EXPECT_FALSE(sessionBus.connection().isConnected()) << address;
    }
}

}  // namespace
}  // namespace kestrelbay::testing
