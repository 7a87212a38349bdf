#include "platform/linux/desktop/DesktopScreenLock.h"

#include <utility>

#include <QDBusConnection>

#include "platform/linux/bus/SessionBus.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

const auto kLogind = u"org.freedesktop.login1"_s;

QDBusConnection openSystemBus(const QString &address, const QString &name) {
    return address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SystemBus, name)
                             : QDBusConnection::connectToBus(address, name);
}

}  // namespace

BusLockWatch::BusLockWatch(const QDBusConnection &sessionBus, const QString &systemBusAddress,
                           std::function<void()> aboutToLock)
    : aboutToLock_(std::move(aboutToLock)),
      // The name has to be another one than that of any other watch.
      systemBusName_(u"kestrelbay-screen-lock-%1"_s.arg(quintptr(this), 0, 16)) {
    QDBusConnection systemBus = openSystemBus(systemBusAddress, systemBusName_);
    // Sent at waking up, too, when there is nothing left to end.
    systemBus.connect(kLogind, u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s,
                      u"PrepareForSleep"_s, this, SLOT(tell()));
    // Of whatever session: which one is ours cannot be asked of logind from within a
    // user's service, and another one's lock costs no more than a click.
    systemBus.connect(kLogind, QString(), u"org.freedesktop.login1.Session"_s, u"Lock"_s, this,
                      SLOT(tell()));
    QDBusConnection bus = sessionBus;
    bus.connect(QString(), QString(), u"org.kde.screensaver"_s, u"AboutToLock"_s, this,
                SLOT(tell()));
}

BusLockWatch::~BusLockWatch() {
    QDBusConnection::disconnectFromBus(systemBusName_);
}

void BusLockWatch::tell() {
    const auto handler = aboutToLock_;  // which may destroy this
    handler();
}

DesktopScreenLock::DesktopScreenLock(SessionBus &sessionBus, QString systemBusAddress)
    : sessionBus_(sessionBus), systemBusAddress_(std::move(systemBusAddress)) {}

std::unique_ptr<ScreenLock::Watch> DesktopScreenLock::watch(std::function<void()> aboutToLock) {
    return std::make_unique<BusLockWatch>(sessionBus_.connection(), systemBusAddress_,
                                          std::move(aboutToLock));
}

}  // namespace kestrelbay
