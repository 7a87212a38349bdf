#include "desktop/session/RulesFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

namespace kestrelbay::desktop {

QByteArray rulesJson(const std::vector<RuleSpec> &rules) {
    QJsonArray array;
    for (const RuleSpec &rule : rules) {
        array.append(QJsonObject{
            {QStringLiteral("id"), QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()},
            {QStringLiteral("appName"), rule.appName},
            {QStringLiteral("appPath"), rule.appPath},
            {QStringLiteral("keyCode"), rule.key.ruleCode},
            {QStringLiteral("modifierFlags"), static_cast<qint64>(rule.modifierFlags)},
            {QStringLiteral("isEnabled"), rule.isEnabled},
            {QStringLiteral("repeatAction"), rule.repeatAction},
            {QStringLiteral("launchArguments"), rule.launchArguments},
            {QStringLiteral("argumentKind"), rule.argumentKind}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

}  // namespace kestrelbay::desktop
