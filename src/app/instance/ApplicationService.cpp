#include "app/instance/ApplicationService.h"

#include <QDBusConnection>

#include <utility>

namespace kestrelbay {

ApplicationService::ApplicationService(QObject *parent, std::function<void()> activate,
                                       Actions actions)
    : QDBusAbstractAdaptor(parent), activate_(std::move(activate)), actions_(std::move(actions)) {}

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

void ApplicationService::ActivateAction(const QString &name, const QVariantList & /*parameter*/,
                                        const QVariantMap & /*platformData*/) {
    if (const auto action = actions_.find(name); action != actions_.end())
        action->second();
}

DiagnosticsService::DiagnosticsService(QObject *parent, std::function<QString()> report)
    : QDBusAbstractAdaptor(parent), report_(std::move(report)) {}

QString DiagnosticsService::Report() {
    return report_();
}

}  // namespace kestrelbay
