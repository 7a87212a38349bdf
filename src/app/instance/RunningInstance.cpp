#include "app/instance/RunningInstance.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>

#include "app/instance/ApplicationService.h"

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

bool isTimeout(const QDBusMessage &message) {
    const QDBusError::ErrorType error = QDBusError(message).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout ||
           error == QDBusError::TimedOut;
}

}  // namespace

RunningInstance::Answer RunningInstance::request(const QString &action) {
    constexpr QLatin1StringView kInterface{"org.freedesktop.Application"};
    const QDBusMessage message = action.isEmpty()
                                     ? call(kInterface, QStringLiteral("Activate"), {QVariantMap()})
                                     : call(kInterface, QStringLiteral("ActivateAction"),
                                            {action, QVariantList(), QVariantMap()});
    if (isAnswer(message))
        return Answer::Done;
    return isTimeout(message) ? Answer::NoAnswer : Answer::Nobody;
}

std::optional<QString> RunningInstance::diagnosticReport() {
    const QDBusMessage answer = call(DiagnosticsService::kInterface, QStringLiteral("Report"), {});
    if (!isAnswer(answer) || answer.arguments().isEmpty())
        return std::nullopt;
    return answer.arguments().constFirst().toString();
}

}  // namespace kestrelbay
