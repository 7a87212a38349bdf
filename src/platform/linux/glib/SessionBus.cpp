#include "platform/linux/glib/SessionBus.h"

namespace kestrelbay {

namespace {

/// Starting a service takes its time; a person does not wait longer than this
/// before pressing again.
constexpr int kLongestBusCallMilliseconds = 5000;

GVariant *platformData(const QString &startupId) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    // The same thing under its X11 and its Wayland name; programs look for either.
    for (const char *key : {"desktop-startup-id", "activation-token"})
        g_variant_builder_add(&builder, "{sv}", key,
                              g_variant_new_string(startupId.toUtf8().constData()));
    return g_variant_builder_end(&builder);
}

GVariant *stringArray(const QStringList &texts) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_STRING_ARRAY);
    for (const QString &text : texts)
        g_variant_builder_add(&builder, "s", text.toUtf8().constData());
    return g_variant_builder_end(&builder);
}

/// The connection that GLib shares within the program, or one of our own: GLib gives
/// out the connection to a bus that has gone for as long as anybody still holds it.
GObjectPtr<GDBusConnection> openConnection() {
    GObjectPtr<GDBusConnection> shared(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!shared)
        return nullptr;
    g_dbus_connection_set_exit_on_close(shared.get(), FALSE);
    if (!g_dbus_connection_is_closed(shared.get()))
        return shared;
    const GCharPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!address)
        return nullptr;
    constexpr auto kFlags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return GObjectPtr<GDBusConnection>(
        g_dbus_connection_new_for_address_sync(address.get(), kFlags, nullptr, nullptr, nullptr));
}

}  // namespace

QString scopeName(const QString &applicationId, qint64 pid) {
    QByteArray escaped;
    for (const char c : applicationId.toUtf8()) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == ':' || c == '_' ||
                           (c == '.' && !escaped.isEmpty());
        if (plain)
            escaped += c;
        else
            escaped += "\\x" + QByteArray(1, c).toHex();
    }
    return QStringLiteral("app-kestrelbay-%1-%2.scope").arg(QString::fromLatin1(escaped)).arg(pid);
}

void SessionBus::connect() {
    static_cast<void>(connection());
}

GObjectPtr<GDBusConnection> SessionBus::connection() {
    const std::lock_guard lock(mutex_);
    if (connection_ && g_dbus_connection_is_closed(connection_.get()))
        connection_.reset();
    if (!connection_)
        connection_ = openConnection();
    if (!connection_)
        return nullptr;
    g_object_ref(connection_.get());
    return GObjectPtr<GDBusConnection>(connection_.get());
}

BusAnswer SessionBus::call(const QString &name, const QString &path, const char *interface,
                           const char *method, GVariant *parameters) {
    const GVariantPtr owned(g_variant_ref_sink(parameters));
    const GObjectPtr<GDBusConnection> bus = connection();
    if (!bus)
        return BusAnswer::Failed;
    GErrorSlot error;
    const GVariantPtr reply(
        g_dbus_connection_call_sync(bus.get(), name.toUtf8().constData(), path.toUtf8().constData(),
                                    interface, method, owned.get(), nullptr, G_DBUS_CALL_FLAGS_NONE,
                                    kLongestBusCallMilliseconds, nullptr, error.out()));
    if (reply)
        return BusAnswer::Done;
    const bool slow = g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
                      g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_TIMEOUT);
    return slow ? BusAnswer::NoAnswerYet : BusAnswer::Failed;
}

BusAnswer SessionBus::activate(const QString &applicationId, const QStringList &uris,
                               const QString &startupId) {
    if (!g_dbus_is_name(applicationId.toUtf8().constData()) || applicationId.startsWith(u':'))
        return BusAnswer::Failed;
    QString path = u'/' + applicationId;
    path.replace(u'.', u'/').replace(u'-', u'_');
    const char *interface = "org.freedesktop.Application";
    if (uris.isEmpty())
        return call(applicationId, path, interface, "Activate",
                    g_variant_new("(@a{sv})", platformData(startupId)));
    return call(applicationId, path, interface, "Open",
                g_variant_new("(@as@a{sv})", stringArray(uris), platformData(startupId)));
}

BusAnswer SessionBus::showFolder(const QString &uri, const QString &startupId) {
    return call(QStringLiteral("org.freedesktop.FileManager1"),
                QStringLiteral("/org/freedesktop/FileManager1"), "org.freedesktop.FileManager1",
                "ShowFolders",
                g_variant_new("(@ass)", stringArray({uri}), startupId.toUtf8().constData()));
}

void SessionBus::moveToScope(const QString &applicationId, qint64 pid) {
    const GObjectPtr<GDBusConnection> bus = connection();
    if (!bus)
        return;
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a(sv)"));
    const auto number = static_cast<guint32>(pid);
    g_variant_builder_add(
        &properties, "(sv)", "PIDs",
        g_variant_new_fixed_array(G_VARIANT_TYPE_UINT32, &number, 1, sizeof number));
    g_variant_builder_add(&properties, "(sv)", "Description",
                          g_variant_new_string(applicationId.toUtf8().constData()));
    g_variant_builder_add(&properties, "(sv)", "Slice", g_variant_new_string("app.slice"));
    g_variant_builder_add(&properties, "(sv)", "CollectMode",
                          g_variant_new_string("inactive-or-failed"));
    g_dbus_connection_call(
        bus.get(), "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
        "org.freedesktop.systemd1.Manager", "StartTransientUnit",
        g_variant_new("(ssa(sv)a(sa(sv)))", scopeName(applicationId, pid).toUtf8().constData(),
                      "fail", &properties, nullptr),
        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, kLongestBusCallMilliseconds, nullptr, nullptr,
        nullptr);
}

}  // namespace kestrelbay
