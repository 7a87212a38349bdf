#include "app/RuleList.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include "model/TrimmedText.h"

namespace kestrelbay {

namespace {

/// Empty for one that nobody could use, as it is another at each load.
QString idText(const RuleFile::LoadResult &loaded, const ShortcutRule &rule) {
    return loaded.madeUpIds.contains(rule.id) ? QString()
                                              : rule.id.toString(QUuid::WithoutBraces).toUpper();
}

/// Names may hold what would look like the end of a column or a line.
QString column(const QString &text) {
    return text.isEmpty() ? QStringLiteral("-") : onOneLine(text);
}

QByteArray textList(const RuleFile::LoadResult &loaded) {
    QString text;
    for (const ShortcutRule &rule : loaded.rules) {
        const QStringList columns{column(idText(loaded, rule)), column(rule.appName),
                                  column(rule.hotkeyString())};
        text += columns.join(u'\t') + u'\n';
    }
    return text.toUtf8();
}

QByteArray jsonList(const RuleFile::LoadResult &loaded) {
    QJsonArray array;
    for (const ShortcutRule &rule : loaded.rules) {
        const QString id = idText(loaded, rule);
        array.append(
            QJsonObject{{QStringLiteral("id"), id.isEmpty() ? QJsonValue() : QJsonValue(id)},
                        {QStringLiteral("appName"), rule.appName},
                        {QStringLiteral("appPath"), rule.appPath},
                        {QStringLiteral("hotkey"), rule.hotkeyString()},
                        {QStringLiteral("isEnabled"), rule.isEnabled}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact) + '\n';
}

}  // namespace

QByteArray ruleList(const RuleFile::LoadResult &loaded, RuleListFormat format) {
    return format == RuleListFormat::Json ? jsonList(loaded) : textList(loaded);
}

}  // namespace kestrelbay
