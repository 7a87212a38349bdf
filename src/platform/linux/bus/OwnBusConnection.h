#pragma once

#include <QDBusConnection>
#include <QString>

namespace kestrelbay {

/// A connection to the session bus that is shared with nobody, closed with its owner. Not connected
/// when there is no bus.
class OwnBusConnection {
public:
    OwnBusConnection();
    ~OwnBusConnection();
    OwnBusConnection(const OwnBusConnection &) = delete;
    OwnBusConnection &operator=(const OwnBusConnection &) = delete;

    [[nodiscard]] QDBusConnection &get() { return connection_; }
    [[nodiscard]] const QDBusConnection &get() const { return connection_; }

private:
    QDBusConnection connection_;
};

}  // namespace kestrelbay
