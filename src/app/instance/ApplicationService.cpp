#include "app/instance/ApplicationService.h"

#include <QDBusConnection>

#include <utility>

namespace kestrelbay {

namespace {

void refuse(const QDBusMessage &call, QLatin1StringView error, const QString &text) {
    call.setDelayedReply(true);
    QDBusConnection::sessionBus().send(call.createErrorReply(error, text));
}

}  // namespace

ApplicationService::ApplicationService(QObject *parent, std::function<void()> activate,
                                       Actions actions, RunRule runRule)
    : QDBusAbstractAdaptor(parent),
      activate_(std::move(activate)),
      actions_(std::move(actions)),
      runRule_(std::move(runRule)) {}

bool ApplicationService::registerOnSessionBus() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    // The object first: whoever waits for the name calls it at once.
    return bus.isConnected() && bus.registerObject(kPath, parent()) && bus.registerService(kName);
}

void ApplicationService::Activate(const QVariantMap & /*platformData*/) {
    activate_();
}

void ApplicationService::Open(const QStringList & /*uris*/, const QVariantMap &platformData) {
    Activate(platformData);
}

void ApplicationService::performAction(const QString &name) const {
    if (const auto action = actions_.find(name); action != actions_.end())
        action->second();
}

void ApplicationService::ActivateAction(const QString &name, const QVariantList &parameter,
                                        const QVariantMap &platformData, const QDBusMessage &call) {
    if (name != actions::kRunRule) {
        performAction(name);
        return;
    }
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!runRule_(parameter.value(0).toString(), token))
        refuse(call, kNoSuchRule, QStringLiteral("There is no rule with this id"));
}

DiagnosticsService::DiagnosticsService(QObject *parent, std::function<QString()> report)
    : QDBusAbstractAdaptor(parent), report_(std::move(report)) {}

QString DiagnosticsService::Report() {
    return report_();
}

RulesService::RulesService(QObject *parent, ImportRules importRules)
    : QDBusAbstractAdaptor(parent), importRules_(std::move(importRules)) {}

void RulesService::Import(const QString &rules, const QDBusMessage &call) {
    if (!importRules_(rules))
        refuse(call, kNotAdded, QStringLiteral("The rules could not be read or saved"));
}

}  // namespace kestrelbay
