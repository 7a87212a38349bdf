#pragma once

#include <mutex>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

/// The connection to the session bus that GIO's own code (launching, settings, file systems)
/// shares within the program. Left to itself GIO opens one for each launch, and ends the program
/// when the bus goes.
class GioBus {
public:
    /// From now on, as long as this lives, GIO does neither. Waits for the bus to answer. Any
    /// thread.
    void keep() {
        const std::lock_guard lock(mutex_);
        // GIO hands out a dead one as long as anybody holds it.
        if (connection_ && g_dbus_connection_is_closed(connection_.get()))
            connection_.reset();
        if (connection_)
            return;
        connection_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        if (connection_)
            g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
    }

private:
    std::mutex mutex_;
    GObjectPtr<GDBusConnection> connection_;
};

}  // namespace kestrelbay
