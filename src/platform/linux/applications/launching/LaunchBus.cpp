#include "platform/linux/applications/launching/LaunchBus.h"

#include <utility>

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QVariantMap>

namespace kestrelbay {

namespace {

/// As the service manager takes it: (sv).
using UnitProperty = std::pair<QString, QDBusVariant>;
/// Another unit to be started along: (sa(sv)).
using AuxiliaryUnit = std::pair<QString, QList<UnitProperty>>;

/// Starting a service takes its time; a person does not wait longer than this
/// before pressing again.
constexpr int kLongestBusCallMilliseconds = 5000;

QDBusMessage methodCall(const QString &service, const QString &path, const QString &interface,
                        const QString &method, const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return message;
}

/// The bus has the same error for a service that died over the call.
bool isOwnTimeout(const QDBusMessage &answer) {
    return QDBusError(answer).type() == QDBusError::NoReply && answer.service().isEmpty();
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

BusAnswer LaunchBus::call(const QDBusMessage &message) {
    const QDBusConnection bus = bus_.connection();
    const QDBusMessage answer = bus.call(message, QDBus::Block, kLongestBusCallMilliseconds);
    if (answer.type() == QDBusMessage::ReplyMessage)
        return BusAnswer::Done;
    return bus.isConnected() && isOwnTimeout(answer) ? BusAnswer::NoAnswerYet : BusAnswer::Failed;
}

BusAnswer LaunchBus::activate(const QString &applicationId, const QStringList &uris,
                              const LaunchIds &ids) {
    QString path = u'/' + applicationId;
    path.replace(u'.', u'/').replace(u'-', u'_');
    // The same thing under its X11 and its Wayland name; programs look for either.
    const QString &token = ids.activationToken.isEmpty() ? ids.startupId : ids.activationToken;
    const QVariantMap platformData{{QStringLiteral("desktop-startup-id"), ids.startupId},
                                   {QStringLiteral("activation-token"), token}};
    const QVariantList arguments =
        uris.isEmpty() ? QVariantList{platformData} : QVariantList{uris, platformData};
    return call(methodCall(applicationId, path, QStringLiteral("org.freedesktop.Application"),
                           uris.isEmpty() ? QStringLiteral("Activate") : QStringLiteral("Open"),
                           arguments));
}

BusAnswer LaunchBus::showFolder(const QString &uri, const QString &startupId) {
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    return call(methodCall(name, QStringLiteral("/org/freedesktop/FileManager1"), name,
                           QStringLiteral("ShowFolders"), {QStringList(uri), startupId}));
}

void LaunchBus::moveToScope(const QString &applicationId, qint64 pid) {
    qDBusRegisterMetaType<UnitProperty>();
    qDBusRegisterMetaType<QList<UnitProperty>>();
    qDBusRegisterMetaType<AuxiliaryUnit>();
    qDBusRegisterMetaType<QList<AuxiliaryUnit>>();
    const auto property = [](const char *name, const QVariant &value) {
        return UnitProperty(QLatin1String(name), QDBusVariant(value));
    };
    const QList<UnitProperty> properties{
        property("PIDs", QVariant::fromValue(QList<uint>{static_cast<uint>(pid)})),
        property("Description", applicationId),
        property("Slice", QStringLiteral("app.slice")),
        property("CollectMode", QStringLiteral("inactive-or-failed")),
    };
    QDBusMessage message = methodCall(
        QStringLiteral("org.freedesktop.systemd1"), QStringLiteral("/org/freedesktop/systemd1"),
        QStringLiteral("org.freedesktop.systemd1.Manager"), QStringLiteral("StartTransientUnit"),
        {scopeName(applicationId, pid), QStringLiteral("fail"), QVariant::fromValue(properties),
         QVariant::fromValue(QList<AuxiliaryUnit>())});
    message.setAutoStartService(false);
    static_cast<void>(bus_.connection().send(message));
}

}  // namespace kestrelbay
