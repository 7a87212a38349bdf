#pragma once

#include <vector>

#include <QDBusArgument>
#include <QList>
#include <QMetaType>

namespace kestrelbay::plasma {

/// A sequence of keys as Plasma has it on the bus: four numbers, of which a shortcut of one key
/// uses the first.
struct BusKeySequence {
    QList<int> keys;

    bool operator==(const BusKeySequence &) const = default;
};

/// To be called before the first one is sent.
void registerBusKeySequence();

QDBusArgument &operator<<(QDBusArgument &argument, const BusKeySequence &sequence);
const QDBusArgument &operator>>(const QDBusArgument &argument, BusKeySequence &sequence);

}  // namespace kestrelbay::plasma

Q_DECLARE_METATYPE(kestrelbay::plasma::BusKeySequence)
