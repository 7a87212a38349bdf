#pragma once

#include <mutex>
#include <optional>

#include <QDBusConnection>

#include "platform/linux/bus/OwnBusConnection.h"

namespace kestrelbay {

/// The way of the back end to the session bus: the connection that Qt shares within the
/// program or, once that is dead, one of our own. Any thread.
class SessionBus {
public:
    /// Opened anew whenever it is found dead; not connected when there is no bus. Valid as
    /// long as this is.
    [[nodiscard]] QDBusConnection connection();

private:
    std::mutex mutex_;
    std::optional<OwnBusConnection> own_;
};

}  // namespace kestrelbay
