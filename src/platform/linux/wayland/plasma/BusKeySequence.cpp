#include "platform/linux/wayland/plasma/BusKeySequence.h"

#include <QDBusMetaType>

namespace kestrelbay::plasma {

void registerBusKeySequence() {
    qDBusRegisterMetaType<BusKeySequence>();
    qDBusRegisterMetaType<QList<BusKeySequence>>();
}

QDBusArgument &operator<<(QDBusArgument &argument, const BusKeySequence &sequence) {
    argument.beginStructure();
    argument << sequence.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, BusKeySequence &sequence) {
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    return argument;
}

}  // namespace kestrelbay::plasma
