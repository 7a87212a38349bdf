#include "support/bus/FakeNotifierWatcher.h"

#include <QDBusVariant>

namespace kestrelbay::testing {

namespace {
const QString kName = QStringLiteral("org.kde.StatusNotifierWatcher");
}

FakeNotifierWatcher::FakeNotifierWatcher(const QString &busAddress, bool hasHost)
    : hasHost_(hasHost),
      object_(
          busAddress, kName, QStringLiteral("/StatusNotifierWatcher"),
          [this](const QDBusMessage &call) {
              const QVariantList expected{kName, QStringLiteral("IsStatusNotifierHostRegistered")};
              if (call.member() == QLatin1String("Get") && call.arguments() == expected)
                  return call.createReply(QVariant::fromValue(QDBusVariant(hasHost_.load())));
              return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no"));
          }) {}

void FakeNotifierWatcher::registerHost() {
    hasHost_ = true;
    object_.emitSignal(kName, QStringLiteral("StatusNotifierHostRegistered"), {});
}

}  // namespace kestrelbay::testing
