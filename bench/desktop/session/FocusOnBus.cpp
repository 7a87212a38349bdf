#include "session/FocusOnBus.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace kestrelbay::bench {

namespace {

/// GIO's, which hands over what comes on the very thread that reads it.
GObjectPtr<GDBusConnection> connectTo(const QString &busAddress) {
    constexpr int kFlags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                           G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
    GObjectPtr<GDBusConnection> connection(g_dbus_connection_new_for_address_sync(
        busAddress.toUtf8().constData(), static_cast<GDBusConnectionFlags>(kFlags), nullptr,
        nullptr, nullptr));
    if (!connection)
        throw std::runtime_error("cannot connect to the session bus");
    return connection;
}

}  // namespace

FocusOnBus::FocusOnBus(const QString &busAddress) : connection_(connectTo(busAddress)) {
    const auto filter = [](GDBusConnection *, GDBusMessage *message, gboolean isIncoming,
                           gpointer self) -> GDBusMessage * {
        const char *const interface = g_dbus_message_get_interface(message);
        if (isIncoming == FALSE || interface == nullptr || std::strcmp(interface, kInterface) != 0)
            return message;
        static_cast<FocusOnBus *>(self)->take(message);
        g_object_unref(message);
        return nullptr;
    };
    g_dbus_connection_add_filter(connection_.get(), filter, this, nullptr);
}

FocusOnBus::~FocusOnBus() {
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

QString FocusOnBus::name() const {
    return QString::fromLatin1(g_dbus_connection_get_unique_name(connection_.get()));
}

void FocusOnBus::take(GDBusMessage *message) {
    const Clock::time_point now = Clock::now();
    const char *const window = g_dbus_message_get_arg0(message);
    if (g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
        // The bus keeps it in mind until it is answered.
        const GObjectPtr<GDBusMessage> heard(g_dbus_message_new_method_reply(message));
        g_dbus_connection_send_message(connection_.get(), heard.get(),
                                       G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    }
    const std::lock_guard lock(mutex_);
    told_.push_back({.window = QString::fromUtf8(window), .when = now});
    isTold_.notify_one();
}

std::optional<BenchSession::Focus> FocusOnBus::next(const QString &target,
                                                    std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    if (!isTold_.wait_for(lock, timeout, [this] { return !told_.empty(); }))
        return std::nullopt;
    const BenchSession::Focus first{.isTargets = told_.front().window == target,
                                    .when = told_.front().when};
    told_.pop_front();
    return first;
}

}  // namespace kestrelbay::bench
