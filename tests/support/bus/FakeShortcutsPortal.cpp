#include "support/bus/FakeShortcutsPortal.h"

#include <utility>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace kestrelbay::testing {

/// (sa{sv})
struct ToldShortcut {
    QString id;
    QVariantMap facts;
};

QDBusArgument &operator<<(QDBusArgument &argument, const ToldShortcut &shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.facts;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ToldShortcut &shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.facts;
    argument.endStructure();
    return argument;
}

}  // namespace kestrelbay::testing

Q_DECLARE_METATYPE(kestrelbay::testing::ToldShortcut)

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {

namespace {

constexpr QLatin1StringView kPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView kGlobalShortcuts{"org.freedesktop.portal.GlobalShortcuts"};
constexpr QLatin1StringView kTrigger{"trigger_description"};

FakeShortcutsPortal::Manner withTypesKnown(FakeShortcutsPortal::Manner manner) {
    qDBusRegisterMetaType<ToldShortcut>();
    qDBusRegisterMetaType<QList<ToldShortcut>>();
    return manner;
}

QString pathBelow(const QDBusMessage &call, QLatin1StringView kind, const QVariant &token) {
    const QString sender = call.service().mid(1).replace(u'.', u'_');
    return u"%1/%2/%3/%4"_s.arg(kPath, kind, sender, token.toString());
}

}  // namespace

FakeShortcutsPortal::FakeShortcutsPortal(const QString &busAddress, Manner manner)
    : manner_(withTypesKnown(manner)),
      object_(busAddress, u"org.freedesktop.portal.Desktop"_s, QString(kPath),
              [this](const QDBusMessage &call) { return answer(call); }) {}

std::optional<QDBusMessage> FakeShortcutsPortal::answer(const QDBusMessage &call) {
    const std::lock_guard lock(mutex_);
    if (call.interface() == u"org.freedesktop.DBus.Properties")
        return call.createReply(QVariant::fromValue(QDBusVariant(1U)));
    calls_.append(call.member());
    if (call.member() == u"Close" && call.path() == session_) {
        session_.clear();
        bound_.clear();
        return call.createReply();
    }
    if (call.interface() == kGlobalShortcuts)
        return answerRequest(call);
    return call.createErrorReply(QDBusError::UnknownMethod, u"no such method"_s);
}

QDBusMessage FakeShortcutsPortal::answerRequest(const QDBusMessage &call) {
    const auto options = qdbus_cast<QVariantMap>(call.arguments().constLast());
    Held response{.request = pathBelow(call, "request"_L1, options[u"handle_token"_s])};
    if (call.member() == u"CreateSession") {
        if (!session_.isEmpty())
            return call.createErrorReply(QDBusError::Failed, u"there is one"_s);
        session_ = pathBelow(call, "session"_L1, options[u"session_handle_token"_s]);
        response.results[u"session_handle"_s] = session_;
        if (manner_ == Manner::BindsAtOnce) {
            bind(options[u"shortcuts"_s]);
            response.results[u"shortcuts"_s] = told();
        }
    } else {
        if (call.member() == u"BindShortcuts" && manner_ == Manner::Current)
            bind(call.arguments().value(1));
        response.code = call.member() == u"BindShortcuts" && manner_ == Manner::Declines ? 1 : 0;
        response.results[u"shortcuts"_s] = told();
    }
    if (isThinking_)
        held_.push_back(response);
    else
        respond(response);
    return call.createReply(QVariant::fromValue(QDBusObjectPath(response.request)));
}

void FakeShortcutsPortal::bind(const QVariant &shortcuts) {
    for (ToldShortcut &shortcut : qdbus_cast<QList<ToldShortcut>>(shortcuts)) {
        if (!withoutKeys_.contains(shortcut.id))
            shortcut.facts[kTrigger] =
                u"the keys "_s + shortcut.facts[u"preferred_trigger"_s].toString();
        bound_[shortcut.id] = shortcut.facts;
    }
}

QVariant FakeShortcutsPortal::told() const {
    QList<ToldShortcut> shortcuts;
    for (const auto &[id, facts] : bound_)
        shortcuts.append({id, {{kTrigger, facts[kTrigger].toString()}}});
    return QVariant::fromValue(shortcuts);
}

void FakeShortcutsPortal::respond(const Held &response) {
    object_.emitSignalBelow(response.request, u"org.freedesktop.portal.Request"_s, u"Response"_s,
                            {response.code, response.results});
}

void FakeShortcutsPortal::tell(const QString &member, const QVariantList &values) {
    const std::lock_guard lock(mutex_);
    object_.emitSignal(kGlobalShortcuts, member,
                       QVariantList{QVariant::fromValue(QDBusObjectPath(session_))} + values);
}

QStringList FakeShortcutsPortal::takeCalls() {
    const std::lock_guard lock(mutex_);
    return std::exchange(calls_, {});
}

std::map<QString, QString> FakeShortcutsPortal::bound() {
    const std::lock_guard lock(mutex_);
    std::map<QString, QString> triggers;
    for (const auto &[id, facts] : bound_)
        triggers[id] = facts[u"preferred_trigger"_s].toString();
    return triggers;
}

QString FakeShortcutsPortal::description(const QString &id) {
    const std::lock_guard lock(mutex_);
    return bound_[id][u"description"_s].toString();
}

bool FakeShortcutsPortal::hasSession() {
    const std::lock_guard lock(mutex_);
    return !session_.isEmpty();
}

void FakeShortcutsPortal::leaveWithoutKeys(const QString &id) {
    const std::lock_guard lock(mutex_);
    withoutKeys_.insert(id);
}

void FakeShortcutsPortal::thinkAbout() {
    const std::lock_guard lock(mutex_);
    isThinking_ = true;
}

void FakeShortcutsPortal::answerAll() {
    const std::lock_guard lock(mutex_);
    isThinking_ = false;
    for (const Held &response : std::exchange(held_, {}))
        respond(response);
}

void FakeShortcutsPortal::press(const QString &id) {
    tell(u"Activated"_s, {id, QVariant::fromValue(qulonglong{0}), QVariantMap()});
}

void FakeShortcutsPortal::release(const QString &id) {
    tell(u"Deactivated"_s, {id, QVariant::fromValue(qulonglong{0}), QVariantMap()});
}

void FakeShortcutsPortal::reassign(const QString &id, const QString &trigger) {
    QVariant shortcuts;
    {
        const std::lock_guard lock(mutex_);
        bound_[id][kTrigger] = trigger;
        shortcuts = told();
    }
    tell(u"ShortcutsChanged"_s, {shortcuts});
}

void FakeShortcutsPortal::closeSession() {
    const std::lock_guard lock(mutex_);
    object_.emitSignalBelow(std::exchange(session_, {}), u"org.freedesktop.portal.Session"_s,
                            u"Closed"_s, {QVariantMap()});
    bound_.clear();
}

}  // namespace kestrelbay::testing
