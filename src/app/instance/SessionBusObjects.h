#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QLatin1StringView>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include "app/instance/ApplicationService.h"

namespace kestrelbay {

/// Where on the session bus an ApplicationService is: one object with the interfaces below, each
/// of which is a child of it. What they are given outlives them.
inline constexpr QLatin1StringView kSessionBusPath{"/org/kestrelbay/KestrelBay"};

/// The methods every desktop application has (org.freedesktop.Application), so that desktop
/// entries and scripts can reach it.
class ActionsOnBus final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// What a caller gets who names a rule that there is not.
    static constexpr QLatin1StringView kNoSuchRule{"org.kestrelbay.KestrelBay.Error.NoSuchRule"};

    ActionsOnBus(QObject *parent, const ApplicationService &service,
                 const ApplicationService::Offers &offers);

public Q_SLOTS:
    // The names and signatures are the freedesktop Desktop Entry Specification's.
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameter,
                        const QVariantMap &platformData, const QDBusMessage &call);

private:
    const ApplicationService &service_;
    const ApplicationService::Offers &offers_;
};

/// Tells other programs of this user, above all `kestrelbay --diagnose`, how the
/// running instance is.
class DiagnosticsOnBus final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kestrelbay.KestrelBay.Diagnostics")

public:
    static constexpr QLatin1StringView kInterface{"org.kestrelbay.KestrelBay.Diagnostics"};

    DiagnosticsOnBus(QObject *parent, const ApplicationService::Offers &offers);

public Q_SLOTS:
    QString Report();

private:
    const ApplicationService::Offers &offers_;
};

/// Adds rules for `kestrelbay --import`.
class RulesOnBus final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kestrelbay.KestrelBay.Rules")

public:
    static constexpr QLatin1StringView kInterface{"org.kestrelbay.KestrelBay.Rules"};

    /// What a caller gets whose rules are no list of rules, or could not be saved.
    static constexpr QLatin1StringView kNotAdded{"org.kestrelbay.KestrelBay.Error.NotAdded"};

    RulesOnBus(QObject *parent, const ApplicationService::Offers &offers);

public Q_SLOTS:
    void Import(const QString &rules, const QDBusMessage &call);

private:
    const ApplicationService::Offers &offers_;
};

}  // namespace kestrelbay
