#include "session/LimitBus.h"

#include <cstring>
#include <utility>

#include <unistd.h>

#include <QByteArray>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay::bench {

LimitBus::LimitBus(const char *signal, Heard heard) : signal_(signal), heard_(std::move(heard)) {
    if (bus_ != nullptr)
        g_dbus_connection_add_filter(bus_, &filter, this, nullptr);
}

GDBusMessage *LimitBus::filter(GDBusConnection * /*bus*/, GDBusMessage *message,
                               gboolean isIncoming, gpointer self) {
    const auto &owner = *static_cast<LimitBus *>(self);
    const char *const member = g_dbus_message_get_member(message);
    if (isIncoming == FALSE || member == nullptr || std::strcmp(member, owner.signal_) != 0)
        return message;
    owner.heard_(owner);
    g_object_unref(message);
    return nullptr;
}

bool LimitBus::listen(const char *path) const {
    const QByteArray rule =
        QByteArray("type='signal',member='") + signal_ + "',path='" + path + '\'';
    return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "AddMatch",
                g_variant_new("(s)", rule.constData()));
}

bool LimitBus::call(const char *service, const char *path, const char *interface,
                    const char *member, GVariant *arguments) const {
    if (bus_ == nullptr)
        return false;
    const GVariantPtr reply(g_dbus_connection_call_sync(bus_, service, path, interface, member,
                                                        arguments, nullptr, G_DBUS_CALL_FLAGS_NONE,
                                                        -1, nullptr, nullptr));
    return reply != nullptr;
}

void LimitBus::tell(const char *service, const char *path, const char *interface,
                    const char *member) const {
    const GObjectPtr<GDBusMessage> message(
        g_dbus_message_new_method_call(service, path, interface, member));
    g_dbus_message_set_flags(message.get(), G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
    g_dbus_connection_send_message(bus_, message.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
}

void LimitBus::wait() {
    while (true)
        ::pause();
}

}  // namespace kestrelbay::bench
