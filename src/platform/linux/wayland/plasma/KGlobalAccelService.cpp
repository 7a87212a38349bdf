#include "platform/linux/wayland/plasma/KGlobalAccelService.h"

#include <utility>

#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>

#include "platform/linux/wayland/plasma/BusKeySequence.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {

namespace {

const auto kService = u"org.kde.kglobalaccel"_s;
const auto kPath = u"/kglobalaccel"_s;
const auto kInterface = u"org.kde.KGlobalAccel"_s;
const auto kComponentInterface = u"org.kde.kglobalaccel.Component"_s;
const auto kFriendlyName = u"KestrelBay"_s;

constexpr int kLongestWaitMilliseconds = 500;

// Of setShortcutKeys().
constexpr uint kSetPresent = 2;     // the program is there
constexpr uint kNoAutoloading = 4;  // these keys, and not those that were stored

QString component() {
    return QLatin1StringView(KGlobalAccelService::kComponent);
}

QString componentPath() {
    return u"/component/"_s + component();
}

QDBusMessage question(const QString &member, const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, kInterface, member);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return message;
}

/// The unique names, and those for the user.
QStringList idOf(const QString &action, const QString &description) {
    return {component(), action, kFriendlyName, description};
}

QList<BusKeySequence> sequencesOf(const std::vector<int> &keys) {
    QList<BusKeySequence> sequences;
    for (const int key : keys)
        sequences.append({{key, 0, 0, 0}});
    return sequences;
}

/// Takes an answer that names the keys of an action.
std::function<void(const QDBusMessage &)> comparing(const std::vector<int> &keys,
                                                    const std::function<void(bool)> &answered) {
    return [wanted = sequencesOf(keys), answered](const QDBusMessage &message) {
        const QDBusReply<QList<BusKeySequence>> reply = message;
        answered(reply.isValid() && reply.value() == wanted);
    };
}

}  // namespace

KGlobalAccelService::KGlobalAccelService(Handlers handlers)
    : handlers_(std::move(handlers)),
      watcher_(kService, bus_.get(), QDBusServiceWatcher::WatchForRegistration) {
    registerBusKeySequence();
    qDBusRegisterMetaType<QList<QStringList>>();
    bus_.get().connect(kService, componentPath(), kComponentInterface, u"globalShortcutPressed"_s,
                       this, SLOT(takePressed(QString, QString, qlonglong)));
    bus_.get().connect(kService, componentPath(), kComponentInterface, u"globalShortcutReleased"_s,
                       this, SLOT(takeReleased(QString, QString, qlonglong)));
    bus_.get().connect(kService, kPath, kInterface, u"yourShortcutsChanged"_s, this,
                       SLOT(takeChanged(QStringList)));
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        const auto handler = handlers_.restarted;
        handler();
    });
}

bool KGlobalAccelService::isThere() {
    QDBusMessage asked = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/"_s, u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    asked.setArguments({kService});
    const QDBusReply<bool> reply = bus_.get().call(asked, QDBus::Block, kLongestWaitMilliseconds);
    return reply.isValid() && reply.value();
}

void KGlobalAccelService::call(const QDBusMessage &message,
                               const std::function<void(const QDBusMessage &)> &answered) {
    auto *const watcher =
        new QDBusPendingCallWatcher(bus_.get().asyncCall(message, kLongestWaitMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, answered] {
        watcher->deleteLater();
        answered(watcher->reply());
    });
}

void KGlobalAccelService::bind(const QString &action, const QString &description,
                               const std::vector<int> &keys,
                               const std::function<void(bool)> &answered) {
    const QStringList id = idOf(action, description);
    bus_.get().send(question(u"doRegister"_s, {id}));
    call(question(u"setShortcutKeys"_s,
                  {id, QVariant::fromValue(sequencesOf(keys)), kSetPresent | kNoAutoloading}),
         comparing(keys, answered));
}

void KGlobalAccelService::askWhether(const QString &action, const std::vector<int> &keys,
                                     const std::function<void(bool)> &answered) {
    call(question(u"shortcutKeys"_s, {idOf(action, {})}), comparing(keys, answered));
}

void KGlobalAccelService::unbind(const QString &action) {
    bus_.get().send(question(u"unregister"_s, {component(), action}));
}

void KGlobalAccelService::unbindAllBut(const std::function<bool(const QString &)> &isWanted) {
    call(question(u"allActionsForComponent"_s, {idOf({}, {})}),
         [this, isWanted](const QDBusMessage &message) {
             const QDBusReply<QList<QStringList>> reply = message;
             for (const QStringList &id : reply.value()) {
                 if (id.size() > 1 && !isWanted(id[1]))
                     unbind(id[1]);
             }
         });
}

void KGlobalAccelService::setBlocked(bool blocked) {
    bus_.get().send(question(u"blockGlobalShortcuts"_s, {blocked}));
}

void KGlobalAccelService::finish() {
    QDBusMessage last = QDBusMessage::createMethodCall(kService, componentPath(),
                                                       kComponentInterface, u"cleanUp"_s);
    last.setAutoStartService(false);
    // Whatever the answer: it comes behind all others.
    static_cast<void>(bus_.get().call(last, QDBus::Block, kLongestWaitMilliseconds));
}

void KGlobalAccelService::takePressed(const QString & /*component*/, const QString &action,
                                      qlonglong /*time*/) {
    const auto handler = handlers_.pressed;
    handler(action);
}

void KGlobalAccelService::takeReleased(const QString & /*component*/, const QString &action,
                                       qlonglong /*time*/) {
    const auto handler = handlers_.released;
    handler(action);
}

void KGlobalAccelService::takeChanged(const QStringList &action) {
    if (action.size() < 2)
        return;
    const Handlers handlers = handlers_;
    if (action[0] == component())
        handlers.changed(action[1]);
    else
        handlers.anotherChanged();
}

}  // namespace kestrelbay::plasma
