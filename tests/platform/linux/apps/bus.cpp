#include "platform/linux/apps/bus.h"

#include <stdexcept>

namespace kestrelbay::testing {

BusService::BusService(const QString &name, const QString &path, const char *interfaceXml,
                       Manner manner)
    : manner_(manner), loop_(std::make_unique<BackgroundLoop>()) {
    loop_->post([=, this] { own(name, path, interfaceXml); });
    std::unique_lock lock(mutex_);
    if (!owned_.wait_for(lock, std::chrono::seconds(10), [&] { return isOwned_; }))
        throw std::runtime_error("the name is not to be had");
}

BusService::~BusService() {
    loop_.reset();
    if (connection_)
        g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

QStringList BusService::calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

void BusService::own(const QString &name, const QString &path, const char *interfaceXml) {
    connection_.reset(g_dbus_connection_new_for_address_sync(
        qgetenv("DBUS_SESSION_BUS_ADDRESS").constData(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    if (!connection_)
        return;
    GDBusNodeInfo *node = g_dbus_node_info_new_for_xml(interfaceXml, nullptr);
    static const GDBusInterfaceVTable kTable{onCall, nullptr, nullptr, {}};
    g_dbus_connection_register_object(connection_.get(), path.toUtf8().constData(),
                                      node->interfaces[0], &kTable, this, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    const GVariantPtr reply(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", name.toUtf8().constData(), 4U), nullptr,
        G_DBUS_CALL_FLAGS_NONE, 5000, nullptr, nullptr));
    const std::lock_guard lock(mutex_);
    isOwned_ = reply != nullptr;
    owned_.notify_all();
}

void BusService::onCall(GDBusConnection *connection, const char *, const char *, const char *,
                        const char *method, GVariant *parameters, GDBusMethodInvocation *invocation,
                        gpointer data) {
    auto *self = static_cast<BusService *>(data);
    {
        const GCharPtr text(g_variant_print(parameters, FALSE));
        const std::lock_guard lock(self->mutex_);
        self->calls_.append(QString::fromUtf8(method) + QString::fromUtf8(text.get()));
    }
    switch (self->manner_) {
        case Manner::Answers:
            if (qstrcmp(method, "StartTransientUnit") == 0)
                g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", "/job"));
            else
                g_dbus_method_invocation_return_value(invocation, nullptr);
            break;
        case Manner::Refuses:
            g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR,
                                                          G_DBUS_ERROR_FAILED, "no");
            break;
        case Manner::KeepsSilent:
            g_object_unref(invocation);
            break;
        case Manner::Dies:
            g_object_unref(invocation);
            g_dbus_connection_close_sync(connection, nullptr, nullptr);
            break;
    }
}

}  // namespace kestrelbay::testing
