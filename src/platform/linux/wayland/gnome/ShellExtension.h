#pragma once

#include <chrono>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QVariantList>

#include "platform/linux/bus/OwnBusConnection.h"

namespace kestrelbay::gnome {

/// This program's extension of GNOME Shell, on a connection to the session bus of its own: the
/// extension serves one connection at a time, and so hotkeys and windows share one. Any thread.
///
/// The Shell draws and answers in one thread, so an answer takes a few milliseconds, and longer
/// while it is busy.
class ShellExtension {
public:
    /// For an answer that somebody waits for.
    static constexpr std::chrono::milliseconds kPatience{1000};

    /// Its name on the bus, which it has while it is enabled, and where it is found there.
    [[nodiscard]] static QString serviceName();
    [[nodiscard]] static QString objectPath();
    [[nodiscard]] static QString interfaceName();

    /// Not connected where there is no bus.
    [[nodiscard]] const QDBusConnection &connection() const { return bus_.get(); }

    /// Is it enabled? Asks the bus.
    [[nodiscard]] bool isThere() const;
    /// Sends a question without waiting for the answer, which is an error after that time.
    [[nodiscard]] QDBusPendingCall send(const QString &method, const QVariantList &arguments,
                                        std::chrono::milliseconds patience = kPatience) const;
    /// Waits for the answer.
    [[nodiscard]] QDBusMessage ask(const QString &method, const QVariantList &arguments) const;

private:
    OwnBusConnection bus_;
};

}  // namespace kestrelbay::gnome
