#include "desktop/gnome/ShellScript.h"

#include <stdexcept>

#include <QDBusMessage>
#include <QJsonArray>
#include <QJsonDocument>

namespace kestrelbay::desktop {

namespace {

constexpr int kScriptTimeoutMs = 5000;

QDBusMessage send(const QDBusConnection &bus, const QString &code) {
    const auto name = QStringLiteral("org.gnome.Shell");
    QDBusMessage message = QDBusMessage::createMethodCall(name, QStringLiteral("/org/gnome/Shell"),
                                                          name, QStringLiteral("Eval"));
    message.setArguments({code});
    return bus.call(message, QDBus::Block, kScriptTimeoutMs);
}

}  // namespace

QJsonValue ShellScript::evaluate(const QString &expression) const {
    // A value alone is no JSON to Qt.
    const QDBusMessage answer = send(bus_, QStringLiteral("[%1]").arg(expression));
    if (!answer.arguments().value(0).toBool())
        return QJsonValue::Undefined;
    return QJsonDocument::fromJson(answer.arguments().value(1).toString().toUtf8()).array().at(0);
}

void ShellScript::run(const QString &statement) const {
    const QDBusMessage answer = send(bus_, statement);
    if (!answer.arguments().value(0).toBool())
        throw std::runtime_error(
            "the Shell could not: " + statement.toStdString() + ": " +
            (answer.errorMessage() + answer.arguments().value(1).toString()).toStdString());
}

}  // namespace kestrelbay::desktop
