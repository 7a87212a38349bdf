#include "app/RunningInstance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>

#include "app/ApplicationService.h"

namespace kestrelbay {

namespace {

// A program that starts is on the bus in a fraction of this; one that hangs never
// answers.
constexpr std::chrono::milliseconds kPatience{3000};

bool call(const QString &method, const QVariantList &arguments) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(ApplicationService::kName, ApplicationService::kPath,
                                       QStringLiteral("org.freedesktop.Application"), method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(
        message, QDBus::Block, static_cast<int>(kPatience.count()));
    return reply.type() == QDBusMessage::ReplyMessage;
}

}  // namespace

bool RunningInstance::request(const QString &action) {
    if (action.isEmpty())
        return call(QStringLiteral("Activate"), {QVariantMap()});
    return call(QStringLiteral("ActivateAction"), {action, QVariantList(), QVariantMap()});
}

}  // namespace kestrelbay
