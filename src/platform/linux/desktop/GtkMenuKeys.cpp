#include "platform/linux/desktop/GtkMenuKeys.h"

#include <algorithm>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QList>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// Of com.canonical.dbusmenu: for each press in turn its modifiers and its key.
using Shortcut = QList<QStringList>;

void write(QDBusArgument &argument, const void *value) {
    Shortcut shortcut = *static_cast<const Shortcut *>(value);
    for (QStringList &press : shortcut)
        std::ranges::replace(press, u","_s, u"comma"_s);
    argument << shortcut;
}

void read(const QDBusArgument &argument, void *value) {
    argument >> *static_cast<Shortcut *>(value);
}

}  // namespace

void nameMenuKeysForGtk() {
    QDBusMetaType::registerMarshallOperators(QMetaType::fromType<Shortcut>(), write, read);
}

}  // namespace kestrelbay
