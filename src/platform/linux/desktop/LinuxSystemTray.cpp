#include "platform/linux/desktop/LinuxSystemTray.h"

#include <algorithm>
#include <utility>

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QStandardPaths>
#include <QStringList>

#include "platform/linux/desktop/GtkMenuKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// The name of the service and of its interface.
constexpr QLatin1StringView kWatcher{"org.kde.StatusNotifierWatcher"};
constexpr QLatin1StringView kWatcherPath{"/StatusNotifierWatcher"};

constexpr int kLongestWatcherWaitMilliseconds = 100;
constexpr int kLongestWatcherCallMilliseconds = 5000;

QDBusMessage hostQuestion() {
    QDBusMessage message = QDBusMessage::createMethodCall(
        kWatcher, kWatcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message.setArguments({QString(kWatcher), u"IsStatusNotifierHostRegistered"_s});
    message.setAutoStartService(false);
    return message;
}

}  // namespace

LinuxSystemTray::LinuxSystemTray(QDBusConnection bus, const SystemSettings &systemSettings,
                                 Settings settings)
    : systemSettings_(systemSettings),
      settings_(std::move(settings)),
      bus_(std::move(bus)),
      watcherWatch_(kWatcher, bus_, QDBusServiceWatcher::WatchForOwnerChange),
      embedTray_(settings_.displayName, [this] {
          settle();
          if (darkHandler_)
              darkHandler_();
      }) {
    connect(&watcherWatch_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                if (owner.isEmpty())
                    setHost(false);
                else
                    askForHost();
            });
    for (const QString &change :
         {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        bus_.connect(kWatcher, kWatcherPath, kWatcher, change, this, SLOT(askForHost()));
    askForHost();
    grace_.setSingleShot(true);
    connect(&grace_, &QTimer::timeout, this, [this] { settle(); });
    grace_.start(settings_.graceForNotifiers);
}

void LinuxSystemTray::whenAvailable(std::function<void()> handler) {
    availableHandler_ = std::move(handler);
    // Whoever asks is not called back before this call is over.
    QMetaObject::invokeMethod(
        this, [this] { settle(); }, Qt::QueuedConnection);
}

void LinuxSystemTray::askForHost() {
    auto *call = new QDBusPendingCallWatcher(
        bus_.asyncCall(hostQuestion(), kLongestWatcherCallMilliseconds), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        takeAnswer(call->reply());
    });
}

void LinuxSystemTray::takeAnswer(const QDBusMessage &answer) {
    setHost(answer.type() == QDBusMessage::ReplyMessage &&
            answer.arguments().value(0).value<QDBusVariant>().variant().toBool());
}

void LinuxSystemTray::setHost(bool present) {
    hasHost_ = present;
    settle();
}

void LinuxSystemTray::waitForAnswer() {
    if (hasHost_)
        return;
    const QDBusMessage answer =
        bus_.call(hostQuestion(), QDBus::Block, kLongestWatcherWaitMilliseconds);
    if (QDBusError(answer).type() != QDBusError::NoReply)
        takeAnswer(answer);
}

void LinuxSystemTray::settle() {
    if (!availableHandler_)
        return;
    const bool canEmbed = embedTray_.isPresent() && !grace_.isActive();
    if (!hasHost() && !canEmbed)
        return;
    settledForHost_ = hasHost();
    std::exchange(availableHandler_, nullptr)();
    // The icon is there now, and no panel has got its menu yet: it asks through the event loop.
    if (!isDesktop({u"KDE"_s, u"LXQt"_s}))
        nameMenuKeysForGtk();
}

bool LinuxSystemTray::isDesktop(const QStringList &names) const {
    return std::ranges::any_of(settings_.desktop.split(u':'), [&](const QString &name) {
        return names.contains(name, Qt::CaseInsensitive);
    });
}

bool LinuxSystemTray::isEmbedding() const {
    return embedTray_.isPresent() && !settledForHost_.value_or(hasHost());
}

bool LinuxSystemTray::isAvailable() const {
    return settledForHost_.value_or(hasHost()) ? hasHost() : embedTray_.isPresent();
}

std::optional<bool> LinuxSystemTray::isDark() const {
    if (embedTray_.isDark())
        return embedTray_.isDark();
    if (isDesktop({u"KDE"_s}))
        return systemSettings_.colorScheme() == ColorScheme::Dark;
    return true;
}

bool LinuxSystemTray::tintsIcon(const QString &name) const {
    return !isEmbedding() && isDesktop({u"GNOME"_s, u"KDE"_s, u"MATE"_s, u"XFCE"_s}) &&
           !QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                   u"icons/hicolor/symbolic/apps/%1.svg"_s.arg(name))
                .isEmpty();
}

void LinuxSystemTray::setDarkHandler(std::function<void()> handler) {
    darkHandler_ = std::move(handler);
}

void LinuxSystemTray::colorSchemeChanged() {
    embedTray_.lookSoon();
    if (isDesktop({u"KDE"_s}) && darkHandler_)
        darkHandler_();
}

QString LinuxSystemTray::description() const {
    if (isEmbedding())
        return QStringLiteral("XEmbed tray");
    return hasHost() ? QStringLiteral("StatusNotifier host") : QStringLiteral("none");
}

}  // namespace kestrelbay
