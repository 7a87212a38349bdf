#include "app/RunningInstance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>

#include "app/ApplicationService.h"
#include "app/DiagnosticsService.h"

namespace kestrelbay {

namespace {

// A program that starts is on the bus in a fraction of this; one that hangs never
// answers.
constexpr std::chrono::milliseconds kPatience{3000};

QDBusMessage call(QLatin1StringView interface, const QString &method,
                  const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        ApplicationService::kName, ApplicationService::kPath, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return QDBusConnection::sessionBus().call(message, QDBus::Block,
                                              static_cast<int>(kPatience.count()));
}

bool isAnswer(const QDBusMessage &message) {
    return message.type() == QDBusMessage::ReplyMessage;
}

}  // namespace

bool RunningInstance::request(const QString &action) {
    constexpr QLatin1StringView kInterface{"org.freedesktop.Application"};
    if (action.isEmpty())
        return isAnswer(call(kInterface, QStringLiteral("Activate"), {QVariantMap()}));
    return isAnswer(call(kInterface, QStringLiteral("ActivateAction"),
                         {action, QVariantList(), QVariantMap()}));
}

std::optional<QString> RunningInstance::diagnosticReport() {
    const QDBusMessage answer = call(DiagnosticsService::kInterface, QStringLiteral("Report"), {});
    if (!isAnswer(answer) || answer.arguments().isEmpty())
        return std::nullopt;
    return answer.arguments().constFirst().toString();
}

}  // namespace kestrelbay
