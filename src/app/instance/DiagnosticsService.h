#pragma once

#include <QDBusAbstractAdaptor>
#include <QLatin1StringView>
#include <QString>

#include <functional>

namespace kestrelbay {

/// Tells other programs of this user, above all `kestrelbay --diagnose`, how the
/// running instance is. Lies at the same name and path as ApplicationService.
class DiagnosticsService final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kestrelbay.KestrelBay.Diagnostics")

public:
    static constexpr QLatin1StringView kInterface{"org.kestrelbay.KestrelBay.Diagnostics"};

    DiagnosticsService(QObject *parent, std::function<QString()> report);

public Q_SLOTS:
    QString Report();

private:
    std::function<QString()> report_;
};

}  // namespace kestrelbay
