#pragma once

#include <functional>
#include <memory>

#include <QObject>
#include <QString>

#include "platform/ScreenLock.h"

class QDBusConnection;

namespace kestrelbay {

class SessionBus;

/// One watch of DesktopScreenLock, with a connection to the system bus of its own.
class BusLockWatch final : public QObject, public ScreenLock::Watch {
    Q_OBJECT

public:
    BusLockWatch(const QDBusConnection &sessionBus, const QString &systemBusAddress,
                 std::function<void()> aboutToLock);
    ~BusLockWatch() override;

private Q_SLOTS:
    void tell();

private:
    const std::function<void()> aboutToLock_;
    const QString systemBusName_;
};

/// Hears of a lock from those who tell of it before a locker asks for the keyboard:
/// logind, when it has the session locked or the machine sleep, and KDE's locker. Others
/// tell when they are done, or fail without a word. Those that lock a session left alone
/// do so after a minute or more, which is for the caller to keep below.
///
/// Asks nothing of either bus until it is watched.
class DesktopScreenLock final : public ScreenLock {
public:
    /// The session bus has to outlive it and its watches. Without an address the system
    /// bus is where it always is.
    explicit DesktopScreenLock(SessionBus &sessionBus, QString systemBusAddress = {});

    /// Opens a connection to the system bus, which the watch closes.
    [[nodiscard]] std::unique_ptr<Watch> watch(std::function<void()> aboutToLock) override;

private:
    SessionBus &sessionBus_;
    const QString systemBusAddress_;
};

}  // namespace kestrelbay
