#include "platform/linux/wayland/portal/ShortcutsSession.h"

#include <algorithm>
#include <utility>

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace kestrelbay::portal {

namespace {

constexpr QLatin1StringView kPortal{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView kPortalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView kShortcuts{"org.freedesktop.portal.GlobalShortcuts"};
constexpr QLatin1StringView kRequest{"org.freedesktop.portal.Request"};
constexpr QLatin1StringView kSession{"org.freedesktop.portal.Session"};
/// The parts of desktops that do a portal's work.
constexpr QLatin1StringView kBackEnds{"org.freedesktop.impl.portal.desktop*"};

/// Always the same: where the desktop knows no other name of the program, it shows this one and
/// keeps the choices of the user by it.
constexpr QLatin1StringView kSessionToken{"KestrelBay"};
constexpr QLatin1StringView kCreateSession{"CreateSession"};
constexpr QLatin1StringView kBindShortcuts{"BindShortcuts"};
constexpr QLatin1StringView kListShortcuts{"ListShortcuts"};

// What a request comes to.
constexpr uint kDone = 0;
constexpr uint kCancelledByUser = 1;

constexpr int kLongestStartMilliseconds = 1000;
/// A key that is held is told of again after at most this long. Some desktops do, and not all tell
/// when it is up.
constexpr qint64 kLongestRepeatMilliseconds = 1000;

QDBusMessage portalCall(const QString &interface, const QString &member) {
    return QDBusMessage::createMethodCall(kPortal, kPortalPath, interface, member);
}

}  // namespace

uint globalShortcutsVersion() {
    OwnBusConnection bus;
    QDBusMessage question = portalCall(u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question.setArguments({QString(kShortcuts), u"version"_s});
    const QDBusMessage answer = bus.get().call(question, QDBus::Block, kLongestStartMilliseconds);
    return answer.arguments().value(0).value<QDBusVariant>().variant().toUInt();
}

ShortcutsSession::ShortcutsSession(Handlers handlers)
    : handlers_(std::move(handlers)), session_(pathOf("session"_L1, kSessionToken)) {
    registerPortalShortcut();
    // Qt looks for the types of a slot by name, and knows this one only once it was used.
    qRegisterMetaType<QDBusObjectPath>();
    beginning_.setSingleShot(true);
    connect(&beginning_, &QTimer::timeout, this, &ShortcutsSession::begin);

    services_.setConnection(bus_.get());
    services_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    services_.setWatchedServices({kPortal, kBackEnds});
    connect(&services_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &service, const QString &before, const QString &now) {
                ownerChanged(service, before, now);
            });
    bus_.get().connect(kPortal, kPortalPath, kShortcuts, u"Activated"_s, this,
                       SLOT(takeActivated(QDBusObjectPath, QString)));
    bus_.get().connect(kPortal, kPortalPath, kShortcuts, u"Deactivated"_s, this,
                       SLOT(takeDeactivated(QDBusObjectPath, QString)));
    bus_.get().connect(kPortal, kPortalPath, kShortcuts, u"ShortcutsChanged"_s, this,
                       SLOT(takeChanged(QDBusMessage)));
    bus_.get().connect(kPortal, session_, kSession, u"Closed"_s, this, SLOT(tryAgain()));
}

ShortcutsSession::~ShortcutsSession() {
    // It takes a moment until the portal sees that the connection has gone.
    if (isSessionAsked_)
        bus_.get().send(
            QDBusMessage::createMethodCall(kPortal, session_, QString(kSession), u"Close"_s));
}

QString ShortcutsSession::pathOf(QLatin1StringView kind, const QString &token) {
    const QString sender = bus_.get().baseService().mid(1).replace(u'.', u'_');
    return u"%1/%2/%3/%4"_s.arg(kPortalPath, kind, sender, token);
}

void ShortcutsSession::setShortcuts(std::vector<Shortcut> shortcuts) {
    if (shortcuts == shortcuts_)
        return;
    shortcuts_ = std::move(shortcuts);
    isAnswered_ = false;
    beginning_.start(0);
}

void ShortcutsSession::ownerChanged(const QString &service, const QString &before,
                                    const QString &now) {
    if (service == kPortal) {
        isSessionAsked_ = false;
        isIntroduced_ = false;
    }
    // One that comes while nothing is put off was started by what is asked of it just now.
    if (!before.isEmpty())
        tryAgain();
    else if (service == kPortal && !now.isEmpty() && beginning_.isActive())
        beginning_.start(std::min(beginning_.remainingTimeAsDuration(), kLongestPauseAfterStart));
}

void ShortcutsSession::tryAgain() {
    if (shortcuts_.empty())
        return;
    // What has lasted was of use.
    if (sinceAnswer_.isValid() && sinceAnswer_.hasExpired(kLongestPause.count()))
        pause_ = kFirstPause;
    sinceAnswer_.invalidate();
    forgetRequest();
    beginning_.start(pause_);
    pause_ = std::min(2 * pause_, kLongestPause);
}

void ShortcutsSession::begin() {
    beginning_.stop();
    forgetRequest();
    down_.clear();
    if (!std::exchange(isSessionAsked_, false)) {
        introduceItself();
        return;
    }
    // There can be another one by the name of the session once it is closed.
    call(QDBusMessage::createMethodCall(kPortal, session_, QString(kSession), u"Close"_s),
         [this](const QDBusMessage &) { introduceItself(); });
}

void ShortcutsSession::introduceItself() {
    if (shortcuts_.empty()) {
        take({});
        return;
    }
    if (std::exchange(isIntroduced_, true)) {
        createSession();
        return;
    }
    // Newer portals want to know the program before anything else; others have no such method.
    QDBusMessage introduction =
        portalCall(u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
    introduction.setArguments({QGuiApplication::desktopFileName(), QVariantMap()});
    call(introduction, [this](const QDBusMessage &) { createSession(); });
}

void ShortcutsSession::createSession() {
    isSessionAsked_ = true;
    // Plasma 5.27 binds those that come with this question, and at the other one only opens its
    // settings. Other portals pass over what they do not know.
    request(kCreateSession, {},
            {{u"session_handle_token"_s, QString(kSessionToken)},
             {u"shortcuts"_s, QVariant::fromValue(list())}});
}

void ShortcutsSession::request(const QString &member, QVariantList arguments, QVariantMap options) {
    const QString token = u"%1_%2"_s.arg(kSessionToken).arg(++requestCount_);
    requestPath_ = pathOf("request"_L1, token);
    requestMember_ = member;
    bus_.get().connect(kPortal, requestPath_, kRequest, u"Response"_s, this,
                       SLOT(takeResponse(uint, QVariantMap)));
    options.insert(u"handle_token"_s, token);
    arguments.append(options);
    QDBusMessage message = portalCall(kShortcuts, member);
    message.setArguments(arguments);
    call(message, [this](const QDBusMessage &reply) {
        if (reply.type() == QDBusMessage::ErrorMessage)
            tryAgain();
    });
}

void ShortcutsSession::call(const QDBusMessage &message, const Then &then) {
    auto *const watcher =
        new QDBusPendingCallWatcher(bus_.get().asyncCall(message), attempt_.get());
    connect(watcher, &QDBusPendingCallWatcher::finished, attempt_.get(), [watcher, then] {
        watcher->deleteLater();
        then(watcher->reply());
    });
}

void ShortcutsSession::forgetRequest() {
    // It may be what calls this.
    std::exchange(attempt_, std::make_unique<QObject>()).release()->deleteLater();
    if (!requestPath_.isEmpty())
        bus_.get().disconnect(kPortal, requestPath_, kRequest, u"Response"_s, this,
                              SLOT(takeResponse(uint, QVariantMap)));
    requestPath_.clear();
}

void ShortcutsSession::takeResponse(uint code, const QVariantMap &results) {
    const QVariant shortcuts = results.value(u"shortcuts"_s);
    const QVariant session = QVariant::fromValue(QDBusObjectPath(session_));
    const QString answered = requestMember_;
    forgetRequest();
    if (answered == kCreateSession) {
        if (code == kCancelledByUser)
            take({});
        else if (code != kDone)
            tryAgain();
        else if (areAllIn(shortcuts))
            take(shortcuts);
        else
            request(kBindShortcuts, {session, QVariant::fromValue(list()), QString()});
    } else if (answered == kBindShortcuts && code != kDone) {
        // Some may be bound all the same, by what the user has said another time.
        request(kListShortcuts, {session});
    } else {
        take(shortcuts);
    }
}

QList<PortalShortcut> ShortcutsSession::list() const {
    QList<PortalShortcut> list;
    for (const Shortcut &shortcut : shortcuts_)
        list.append({.id = shortcut.id,
                     .facts = {{u"description"_s, shortcut.description},
                               {u"preferred_trigger"_s, shortcut.preferredTrigger}}});
    return list;
}

bool ShortcutsSession::areAllIn(const QVariant &shortcuts) const {
    const QList<PortalShortcut> told = shortcutsIn(shortcuts);
    return std::ranges::all_of(shortcuts_, [&told](const Shortcut &shortcut) {
        return std::ranges::find(told, shortcut.id, &PortalShortcut::id) != told.end();
    });
}

void ShortcutsSession::take(const QVariant &shortcuts) {
    triggers_.clear();
    for (const PortalShortcut &shortcut : shortcutsIn(shortcuts))
        triggers_.insert_or_assign(shortcut.id,
                                   shortcut.facts.value(u"trigger_description"_s).toString());
    isAnswered_ = true;
    sinceAnswer_.start();
    const auto handler = handlers_.triggersTold;
    handler();
}

void ShortcutsSession::takeChanged(const QDBusMessage &message) {
    if (message.arguments().value(0).value<QDBusObjectPath>().path() == session_)
        take(message.arguments().value(1));
}

void ShortcutsSession::takeActivated(const QDBusObjectPath &session, const QString &id) {
    if (session.path() != session_ ||
        std::ranges::find(shortcuts_, id, &Shortcut::id) == shortcuts_.end())
        return;
    QElapsedTimer &told = down_[id];
    const bool isRepeat = told.isValid() && !told.hasExpired(kLongestRepeatMilliseconds);
    told.start();
    const auto handler = handlers_.pressed;
    if (!isRepeat)
        handler(id);
}

void ShortcutsSession::takeDeactivated(const QDBusObjectPath &session, const QString &id) {
    if (session.path() == session_)
        down_.erase(id);
}

}  // namespace kestrelbay::portal
