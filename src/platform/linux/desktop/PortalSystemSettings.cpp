#include "platform/linux/desktop/PortalSystemSettings.h"

#include <chrono>
#include <utility>

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr std::chrono::milliseconds kLongestPortalWait{100};
/// A portal that is slower than this is treated like one that is not there.
constexpr int kLongestPortalCallMilliseconds = 5000;

constexpr QLatin1StringView kPortal{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView kPortalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView kPortalInterface{"org.freedesktop.portal.Settings"};
constexpr QLatin1StringView kNamespace{"org.freedesktop.appearance"};
constexpr QLatin1StringView kColorSchemeKey{"color-scheme"};
constexpr QLatin1StringView kRead{"ReadOne"};
/// Of portals before version 2 of the interface.
constexpr QLatin1StringView kOlderRead{"Read"};
constexpr uint kPrefersDark = 1;

/// As the portal gives it; the older of its methods wraps it twice.
std::optional<ColorScheme> schemeIn(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    if (value.metaType() != QMetaType::fromType<uint>())
        return std::nullopt;
    return value.toUInt() == kPrefersDark ? ColorScheme::Dark : ColorScheme::Light;
}

QDBusMessage schemeQuestion(const QString &method) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(kPortal, kPortalPath, kPortalInterface, method);
    message.setArguments({QString(kNamespace), QString(kColorSchemeKey)});
    message.setAutoStartService(false);
    return message;
}

bool isAnswer(const QDBusMessage &message) {
    return message.type() == QDBusMessage::ReplyMessage;
}

bool isTimeout(const QDBusMessage &message) {
    return QDBusError(message).type() == QDBusError::NoReply;
}

}  // namespace

PortalSystemSettings::PortalSystemSettings(QDBusConnection bus)
    : bus_(std::move(bus)), portalWatch_(kPortal, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&portalWatch_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                if (owner.isEmpty()) {
                    portalVanished();
                } else {
                    isPortalPresent_ = true;
                    askPortal(kRead);
                }
            });
    // Qt looks for the types of a slot by name, and knows this one only once it was used.
    qRegisterMetaType<QDBusVariant>();
    bus_.connect(kPortal, kPortalPath, kPortalInterface, u"SettingChanged"_s, this,
                 SLOT(takeChange(QString, QString, QDBusVariant)));

    const QDeadlineTimer patience(kLongestPortalWait);
    isPortalPresent_ = bus_.isConnected() && bus_.interface()->isServiceRegistered(kPortal);
    if (isPortalPresent_)
        waitForPortal(patience);
    else
        portalVanished();
    if (desktop_) {
        fromDesktop_ = desktop_->waitForFirst(std::chrono::milliseconds(patience.remainingTime()));
        update();
    }
}

void PortalSystemSettings::setColorSchemeHandler(std::function<void()> handler) {
    handler_ = std::move(handler);
}

void PortalSystemSettings::waitForPortal(const QDeadlineTimer &patience) {
    const auto ask = [&](const QString &method) {
        return bus_.call(schemeQuestion(method), QDBus::Block,
                         static_cast<int>(patience.remainingTime()));
    };
    QDBusMessage answer = ask(kRead);
    if (!isAnswer(answer) && !isTimeout(answer))
        answer = ask(kOlderRead);
    // The answer to a call that was given up is lost; the next one is waited for by nobody.
    if (isTimeout(answer))
        askPortal(kRead);
    takeAnswer(answer);
}

void PortalSystemSettings::askPortal(const QString &method) {
    auto *call = new QDBusPendingCallWatcher(
        bus_.asyncCall(schemeQuestion(method), kLongestPortalCallMilliseconds), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, method] {
        call->deleteLater();
        const QDBusMessage answer = call->reply();
        if (!isAnswer(answer) && method == kRead)
            askPortal(kOlderRead);
        else
            takeAnswer(answer);
    });
}

void PortalSystemSettings::takeAnswer(const QDBusMessage &answer) {
    if (isAnswer(answer))
        fromPortal_ = schemeIn(answer.arguments().value(0));
    if (!fromPortal_)
        askDesktop();
    update();
}

void PortalSystemSettings::takeChange(const QString &space, const QString &key,
                                      const QDBusVariant &value) {
    if (space != kNamespace || key != kColorSchemeKey)
        return;
    if (const auto scheme = schemeIn(value.variant())) {
        fromPortal_ = scheme;
        update();
    }
}

void PortalSystemSettings::portalVanished() {
    isPortalPresent_ = false;
    if (!std::exchange(wasStarted_, true) && bus_.isConnected()) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                           u"org.freedesktop.DBus"_s, u"StartServiceByName"_s);
        message.setArguments({QString(kPortal), 0U});
        bus_.send(message);
    }
    if (!fromPortal_)
        askDesktop();
}

void PortalSystemSettings::askDesktop() {
    if (desktop_)
        return;
    desktop_ = std::make_unique<DesktopColorScheme>([this](std::optional<ColorScheme> scheme) {
        fromDesktop_ = scheme;
        update();
    });
}

void PortalSystemSettings::update() {
    const ColorScheme scheme = fromPortal_.value_or(fromDesktop_.value_or(ColorScheme::Light));
    if (std::exchange(scheme_, scheme) == scheme)
        return;
    Q_EMIT colorSchemeChanged();
    if (const auto handler = handler_)
        handler();
}

}  // namespace kestrelbay
