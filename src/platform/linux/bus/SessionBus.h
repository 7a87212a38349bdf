#pragma once

#include <mutex>

#include <QDBusConnection>
#include <QString>

namespace kestrelbay {

/// The way of the back end to the session bus: the connection that Qt shares within the
/// program or, once that is dead, one of our own. Any thread.
class SessionBus {
public:
    ~SessionBus();

    /// Opened anew whenever it is found dead; not connected when there is no bus. Valid as
    /// long as this is.
    [[nodiscard]] QDBusConnection connection();

private:
    std::mutex mutex_;
    /// Of the connection of our own; empty before there is one.
    QString name_;
};

}  // namespace kestrelbay
