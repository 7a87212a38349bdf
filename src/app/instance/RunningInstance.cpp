#include "app/instance/RunningInstance.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>

#include "app/instance/SessionBusObjects.h"

namespace kestrelbay {

namespace {

// A program that starts is on the bus in a fraction of this; one that hangs never
// answers.
constexpr std::chrono::milliseconds kPatience{3000};

/// A connection for a request. The one that Qt shares within the program begins with the
/// application object that it is to serve, and some requests come before that one.
class BusForRequest {
public:
    ~BusForRequest() { QDBusConnection::disconnectFromBus(kName); }
    BusForRequest() = default;
    BusForRequest(const BusForRequest &) = delete;
    BusForRequest &operator=(const BusForRequest &) = delete;

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }

    [[nodiscard]] QDBusMessage call(QLatin1StringView interface, const QString &method,
                                    const QVariantList &arguments) const {
        QDBusMessage message = QDBusMessage::createMethodCall(ApplicationService::kName,
                                                              kSessionBusPath, interface, method);
        message.setArguments(arguments);
        message.setAutoStartService(false);
        return bus_.call(message, QDBus::Block, static_cast<int>(kPatience.count()));
    }

private:
    static constexpr QLatin1StringView kName{"kestrelbay-request"};
    const QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kName);
};

bool isAnswer(const QDBusMessage &message) {
    return message.type() == QDBusMessage::ReplyMessage;
}

bool isTimeout(const QDBusMessage &message) {
    const QDBusError::ErrorType error = QDBusError(message).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout ||
           error == QDBusError::TimedOut;
}

}  // namespace

RunningInstance::Answer RunningInstance::request(const QString &action, const QString &ruleId) {
    constexpr QLatin1StringView kInterface{"org.freedesktop.Application"};
    const BusForRequest bus;
    if (!bus.isConnected())
        return Answer::NoBus;
    QVariantMap platformData;
    if (const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"); !token.isEmpty())
        platformData.insert(QStringLiteral("activation-token"), token);
    const QVariantList parameter = ruleId.isEmpty() ? QVariantList() : QVariantList{ruleId};
    const QDBusMessage message =
        action.isEmpty() ? bus.call(kInterface, QStringLiteral("Activate"), {platformData})
                         : bus.call(kInterface, QStringLiteral("ActivateAction"),
                                    {action, parameter, platformData});
    if (isAnswer(message))
        return Answer::Done;
    if (message.errorName() == ActionsOnBus::kNoSuchRule)
        return Answer::NoSuchRule;
    return isTimeout(message) ? Answer::NoAnswer : Answer::Nobody;
}

RunningInstance::ImportAnswer RunningInstance::importRules(const QString &rules) {
    const BusForRequest bus;
    if (!bus.isConnected())
        return ImportAnswer::Nobody;
    const QDBusMessage message =
        bus.call(RulesOnBus::kInterface, QStringLiteral("Import"), {rules});
    if (isAnswer(message))
        return ImportAnswer::Added;
    if (message.errorName() == RulesOnBus::kNotAdded)
        return ImportAnswer::NotAdded;
    return isTimeout(message) ? ImportAnswer::NoAnswer : ImportAnswer::Nobody;
}

std::optional<QString> RunningInstance::diagnosticReport() {
    const BusForRequest bus;
    const QDBusMessage answer =
        bus.call(DiagnosticsOnBus::kInterface, QStringLiteral("Report"), {});
    if (!isAnswer(answer) || answer.arguments().isEmpty())
        return std::nullopt;
    return answer.arguments().constFirst().toString();
}

}  // namespace kestrelbay
