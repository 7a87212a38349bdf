#include "platform/linux/wayland/portal/PortalShortcut.h"

#include <QDBusMetaType>

namespace kestrelbay::portal {

void registerPortalShortcut() {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.facts;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.facts;
    argument.endStructure();
    return argument;
}

QList<PortalShortcut> shortcutsIn(const QVariant &value) {
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1StringView("a(sa{sv})")
               ? qdbus_cast<QList<PortalShortcut>>(argument)
               : QList<PortalShortcut>();
}

}  // namespace kestrelbay::portal
