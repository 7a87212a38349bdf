#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

namespace kestrelbay::portal {

/// A shortcut as it goes over the bus, (sa{sv}), either way.
struct PortalShortcut {
    /// By which it is told of, and by which the desktop keeps what the user has chosen for it.
    QString id;
    QVariantMap facts;

    bool operator==(const PortalShortcut &) const = default;
};

/// To be called before shortcuts are sent or read.
void registerPortalShortcut();

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

/// Those of an answer or a signal; none for what is no list of them.
[[nodiscard]] QList<PortalShortcut> shortcutsIn(const QVariant &value);

}  // namespace kestrelbay::portal

Q_DECLARE_METATYPE(kestrelbay::portal::PortalShortcut)
