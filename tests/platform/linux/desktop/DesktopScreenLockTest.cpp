#include "platform/linux/desktop/DesktopScreenLock.h"

#include <functional>
#include <memory>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <gtest/gtest.h>

#include "platform/linux/bus/SessionBus.h"
#include "support/Poll.h"
#include "support/bus/PrivateSessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {
namespace {

/// Another program on a bus, which sends signals under a well-known name.
class Sender {
public:
    Sender(const PrivateSessionBus &bus, const QString &service)
        : connection_(QDBusConnection::connectToBus(bus.address(), service)) {
        EXPECT_TRUE(connection_.registerService(service));
    }
    ~Sender() { QDBusConnection::disconnectFromBus(connection_.name()); }
    Sender(const Sender &) = delete;
    Sender &operator=(const Sender &) = delete;

    void send(const QString &path, const QString &interface, const QString &member,
              const QVariantList &values = {}) {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, member);
        signal.setArguments(values);
        connection_.send(signal);
    }
    [[nodiscard]] qsizetype programsOnTheBus() const {
        const QStringList names = connection_.interface()->registeredServiceNames();
        return names.filter(u":"_s).size();
    }

private:
    QDBusConnection connection_;
};

/// A desktop with a locker, and a machine with logind.
class DesktopScreenLockTest : public ::testing::Test {
protected:
    DesktopScreenLockTest() { qputenv("DBUS_SESSION_BUS_ADDRESS", sessionBus_.address().toUtf8()); }
    ~DesktopScreenLockTest() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    void watch() {
        watch_ = screenLock_.watch([this] { ++told_; });
    }
    /// The bus may see the signal before the wish to hear it.
    [[nodiscard]] bool isTold(const std::function<void()> &send) {
        told_ = 0;
        return waitUntil([&] {
            send();
            return told_ > 0;
        });
    }

    const PrivateSessionBus sessionBus_;
    const PrivateSessionBus systemBus_;
    Sender locker_{sessionBus_, u"org.kde.screensaver"_s};
    Sender logind_{systemBus_, u"org.freedesktop.login1"_s};
    SessionBus connection_;
    DesktopScreenLock screenLock_{connection_, systemBus_.address()};
    std::unique_ptr<ScreenLock::Watch> watch_;
    int told_ = 0;
};

TEST_F(DesktopScreenLockTest, TellsBeforeTheMachineSleeps) {
    watch();
    EXPECT_TRUE(isTold([this] {
        logind_.send(u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
                     u"PrepareForSleep"_s, {true});
    }));
}

TEST_F(DesktopScreenLockTest, TellsWhenASessionIsToBeLocked) {
    watch();
    EXPECT_TRUE(isTold([this] {
        logind_.send(u"/org/freedesktop/login1/session/_32"_s, u"org.freedesktop.login1.Session"_s,
                     u"Lock"_s);
    }));
}

TEST_F(DesktopScreenLockTest, TellsBeforeTheLockerOfKdeGrabsTheKeyboard) {
    watch();
    EXPECT_TRUE(isTold(
        [this] { locker_.send(u"/ScreenSaver"_s, u"org.kde.screensaver"_s, u"AboutToLock"_s); }));
}

TEST_F(DesktopScreenLockTest, IsOnTheSystemBusOnlyWhileItIsWatched) {
    const qsizetype before = logind_.programsOnTheBus();
    watch();
    EXPECT_EQ(logind_.programsOnTheBus(), before + 1);
    watch_.reset();
    EXPECT_TRUE(waitUntil([&] { return logind_.programsOnTheBus() == before; }));
}

TEST_F(DesktopScreenLockTest, TheHandlerMayEndTheWatch) {
    watch_ = screenLock_.watch([this] {
        watch_.reset();
        ++told_;
    });
    EXPECT_TRUE(isTold(
        [this] { locker_.send(u"/ScreenSaver"_s, u"org.kde.screensaver"_s, u"AboutToLock"_s); }));
    EXPECT_FALSE(watch_);
}

TEST_F(DesktopScreenLockTest, WithoutASystemBusThereIsStillTheDesktop) {
    DesktopScreenLock screenLock(connection_, u"unix:path=/nonexistent/bus"_s);
    watch_ = screenLock.watch([this] { ++told_; });
    EXPECT_TRUE(isTold(
        [this] { locker_.send(u"/ScreenSaver"_s, u"org.kde.screensaver"_s, u"AboutToLock"_s); }));
}

}  // namespace
}  // namespace kestrelbay::testing
