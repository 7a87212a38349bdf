#include "app/instance/SessionBusObjects.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace kestrelbay {

namespace {

void refuse(const QDBusMessage &call, QLatin1StringView error, const QString &text) {
    call.setDelayedReply(true);
    QDBusConnection::sessionBus().send(call.createErrorReply(error, text));
}

}  // namespace

bool ApplicationService::registerOnSessionBus() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return false;
    onBus_ = std::make_unique<QObject>();
    // Its children from here on.
    new ActionsOnBus(onBus_.get(), *this, offers_);
    new DiagnosticsOnBus(onBus_.get(), offers_);
    new RulesOnBus(onBus_.get(), offers_);
    // The object first: whoever waits for the name calls it at once.
    return bus.registerObject(kSessionBusPath, onBus_.get()) && bus.registerService(kName);
}

ActionsOnBus::ActionsOnBus(QObject *parent, const ApplicationService &service,
                           const ApplicationService::Offers &offers)
    : QDBusAbstractAdaptor(parent), service_(service), offers_(offers) {}

void ActionsOnBus::Activate(const QVariantMap & /*platformData*/) {
    offers_.activate();
}

void ActionsOnBus::Open(const QStringList & /*uris*/, const QVariantMap &platformData) {
    Activate(platformData);
}

void ActionsOnBus::ActivateAction(const QString &name, const QVariantList &parameter,
                                  const QVariantMap &platformData, const QDBusMessage &call) {
    if (name != actions::kRunRule) {
        service_.performAction(name);
        return;
    }
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!offers_.runRule(parameter.value(0).toString(), token))
        refuse(call, kNoSuchRule, QStringLiteral("There is no rule with this id"));
}

DiagnosticsOnBus::DiagnosticsOnBus(QObject *parent, const ApplicationService::Offers &offers)
    : QDBusAbstractAdaptor(parent), offers_(offers) {}

QString DiagnosticsOnBus::Report() {
    return offers_.report();
}

RulesOnBus::RulesOnBus(QObject *parent, const ApplicationService::Offers &offers)
    : QDBusAbstractAdaptor(parent), offers_(offers) {}

void RulesOnBus::Import(const QString &rules, const QDBusMessage &call) {
    if (!offers_.importRules(rules))
        refuse(call, kNotAdded, QStringLiteral("The rules could not be read or saved"));
}

}  // namespace kestrelbay
