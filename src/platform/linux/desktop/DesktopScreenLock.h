#pragma once

#include <QString>

#include "platform/ScreenLock.h"

namespace kestrelbay {

class SessionBus;

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
