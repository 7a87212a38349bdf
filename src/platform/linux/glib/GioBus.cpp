#include "platform/linux/glib/GioBus.h"

namespace kestrelbay {

void GioBus::keep() {
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

}  // namespace kestrelbay
