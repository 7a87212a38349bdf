#include "desktop/session/StatusNotifiers.h"

#include <stdexcept>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace kestrelbay::desktop {

namespace {

const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kItem = QStringLiteral("org.kde.StatusNotifierItem");
constexpr int kPatience = 2000;  // milliseconds

QVariant propertyOf(const QDBusConnection &bus, const QString &service, const QString &path,
                    const QString &interface, const QString &name) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, kProperties, QStringLiteral("Get"));
    call.setArguments({interface, name});
    call.setAutoStartService(false);
    const QDBusMessage answer = bus.call(call, QDBus::Block, kPatience);
    return answer.arguments().isEmpty() || answer.type() != QDBusMessage::ReplyMessage
               ? QVariant()
               : answer.arguments().constFirst().value<QDBusVariant>().variant();
}

QVariant propertyOfWatcher(const QDBusConnection &bus, const QString &name) {
    return propertyOf(bus, kWatcher, QStringLiteral("/StatusNotifierWatcher"), kWatcher, name);
}

/// The keys of the first of the shortcuts (aas).
QString shortcutIn(const QVariant &value) {
    QList<QStringList> shortcuts;
    if (value.canConvert<QDBusArgument>())
        value.value<QDBusArgument>() >> shortcuts;
    return shortcuts.isEmpty() ? QString() : shortcuts.constFirst().join(u'+');
}

/// One entry of a layout: (id, properties, entries below).
StatusNotifiers::Entry entryIn(const QDBusArgument &argument, QVariantList &below) {
    StatusNotifiers::Entry entry;
    QVariantMap properties;
    argument.beginStructure();
    argument >> entry.id >> properties >> below;
    argument.endStructure();
    entry.title = properties.value(QStringLiteral("label")).toString().remove(u'_');
    entry.shortcut = shortcutIn(properties.value(QStringLiteral("shortcut")));
    entry.isSeparator = properties.value(QStringLiteral("type")).toString() == u"separator";
    return entry;
}

}  // namespace

StatusNotifiers::StatusNotifiers(const QString &busAddress)
    : bus_(QDBusConnection::connectToBus(busAddress, QStringLiteral("kestrelbay-desktop"))) {
    if (!bus_.isConnected())
        throw std::runtime_error("the session bus does not answer");
}

StatusNotifiers::~StatusNotifiers() {
    QDBusConnection::disconnectFromBus(QStringLiteral("kestrelbay-desktop"));
}

bool StatusNotifiers::hasHost() const {
    return propertyOfWatcher(bus_, QStringLiteral("IsStatusNotifierHostRegistered")).toBool();
}

QStringList StatusNotifiers::items() const {
    return propertyOfWatcher(bus_, QStringLiteral("RegisteredStatusNotifierItems")).toStringList();
}

std::optional<StatusNotifiers::Place> StatusNotifiers::firstItem() const {
    const QStringList all = items();
    if (all.isEmpty())
        return std::nullopt;
    const QString &first = all.constFirst();
    const qsizetype slash = first.indexOf(u'/');
    if (slash < 0)
        return Place{first, QStringLiteral("/StatusNotifierItem")};
    return Place{first.left(slash), first.mid(slash)};
}

QVariant StatusNotifiers::property(const QString &name) const {
    const auto item = firstItem();
    return item ? propertyOf(bus_, item->service, item->path, kItem, name) : QVariant();
}

std::vector<StatusNotifiers::Entry> StatusNotifiers::menu() const {
    const auto item = firstItem();
    const QString path = property(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    if (!item || path.isEmpty())
        return {};
    QDBusMessage call = QDBusMessage::createMethodCall(
        item->service, path, QStringLiteral("com.canonical.dbusmenu"), QStringLiteral("GetLayout"));
    constexpr int kWholeMenu = 0;
    constexpr int kAllLevels = -1;
    call.setArguments({kWholeMenu, kAllLevels, QStringList()});
    const QDBusMessage answer = bus_.call(call, QDBus::Block, kPatience);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().size() < 2)
        return {};
    QVariantList below;
    (void)entryIn(answer.arguments()[1].value<QDBusArgument>(), below);
    std::vector<Entry> entries;
    for (const QVariant &entry : below) {
        QVariantList none;
        entries.push_back(entryIn(entry.value<QDBusArgument>(), none));
    }
    return entries;
}

QString StatusNotifiers::told(const std::vector<Entry> &menu) {
    QStringList all;
    for (const Entry &entry : menu) {
        if (entry.isSeparator)
            all += QStringLiteral("—");
        else if (entry.shortcut.isEmpty())
            all += entry.title;
        else
            all += QStringLiteral("%1 [%2]").arg(entry.title, entry.shortcut);
    }
    return all.join(QStringLiteral(" | "));
}

}  // namespace kestrelbay::desktop
