#include "platform/linux/desktop/PortalSystemSettings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <utility>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/glib/GObjectPtr.h"
#include "platform/linux/glib/GioBus.h"

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
constexpr QLatin1StringView kAccentKey{"accent-color"};
constexpr QLatin1StringView kContrastKey{"contrast"};
constexpr uint kPrefersDark = 1;
constexpr uint kWantsMoreContrast = 1;

std::optional<ColorScheme> schemeIn(const QVariant &value) {
    if (value.metaType() != QMetaType::fromType<uint>())
        return std::nullopt;
    return value.toUInt() == kPrefersDark ? ColorScheme::Dark : ColorScheme::Light;
}

/// Red, green and blue of sRGB from 0 to 1; anything outside means that there is no wish.
std::optional<QColor> accentIn(const QVariant &value) {
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1StringView("(ddd)"))
        return std::nullopt;
    std::array<double, 3> parts{};
    argument.beginStructure();
    for (double &part : parts)
        argument >> part;
    argument.endStructure();
    if (!std::ranges::all_of(parts, [](double part) { return part >= 0 && part <= 1; }))
        return std::nullopt;
    return QColor::fromRgbF(float(parts[0]), float(parts[1]), float(parts[2]));
}

bool isContrastHighIn(const QVariant &value) {
    return value.metaType() == QMetaType::fromType<uint>() && value.toUInt() == kWantsMoreContrast;
}

/// Every version of the portal knows this question.
QDBusMessage appearanceQuestion() {
    QDBusMessage message =
        QDBusMessage::createMethodCall(kPortal, kPortalPath, kPortalInterface, u"ReadAll"_s);
    message.setArguments({QStringList{QString(kNamespace)}});
    message.setAutoStartService(false);
    return message;
}

bool isAnswer(const QDBusMessage &message) {
    return message.type() == QDBusMessage::ReplyMessage;
}

bool isTimeout(const QDBusMessage &message) {
    return QDBusError(message).type() == QDBusError::NoReply;
}

constexpr const char *kDesktopSchema = "org.gnome.desktop.interface";
constexpr const char *kDesktopKey = "color-scheme";

using GSettingsSchemaPtr = std::unique_ptr<GSettingsSchema, ReleaseWith<g_settings_schema_unref>>;

GObjectPtr<GSettings> interfaceSettings() {
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    if (source == nullptr)
        return nullptr;
    // Asked for, since GSettings ends the program over a schema or key that is missing.
    const GSettingsSchemaPtr schema(g_settings_schema_source_lookup(source, kDesktopSchema, TRUE));
    if (!schema || !g_settings_schema_has_key(schema.get(), kDesktopKey))
        return nullptr;
    return GObjectPtr<GSettings>(g_settings_new_full(schema.get(), nullptr, nullptr));
}

}  // namespace

/// The colour scheme among the settings of GNOME and its relatives. GSettings tells of
/// changes to a thread that runs GLib's loop, which is one of its own. To be made and
/// destroyed on the main thread.
class PortalSystemSettings::Desktop {
public:
    /// None where the desktop has no such setting.
    using Handler = std::function<void(std::optional<ColorScheme>)>;

    /// The handler is called from the main event loop, first with what is set, then at each
    /// change.
    explicit Desktop(Handler handler) : handler_(std::move(handler)) {
        loop_.post([this] { start(); });
    }

    ~Desktop() {
        loop_.post([this] {
            if (settings_)
                g_signal_handlers_disconnect_by_data(settings_.get(), this);
            settings_.reset();
        });
    }

    /// What is set at first, if that becomes known within this time. To be asked once.
    [[nodiscard]] std::optional<ColorScheme> waitForFirst(std::chrono::milliseconds longest) {
        const bool isKnown = first_.wait_for(longest) == std::future_status::ready;
        return isKnown ? first_.get() : std::nullopt;
    }

private:
    void start() {
        settings_ = interfaceSettings();
        if (settings_)
            g_signal_connect(settings_.get(), "changed::color-scheme",
                             G_CALLBACK(&Desktop::onChanged), this);
        const std::optional<ColorScheme> scheme = read();
        firstPromise_.set_value(scheme);
        tell(scheme);
        // GSettings hears of changes over it.
        bus_.keep();
    }

    void tell(std::optional<ColorScheme> scheme) {
        QMetaObject::invokeMethod(
            &receiver_, [handler = handler_, scheme] { handler(scheme); }, Qt::QueuedConnection);
    }

    [[nodiscard]] std::optional<ColorScheme> read() const {
        if (!settings_)
            return std::nullopt;
        const GVariantPtr value(g_settings_get_value(settings_.get(), kDesktopKey));
        const bool isText = g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING);
        return isText && qstrcmp(g_variant_get_string(value.get(), nullptr), "prefer-dark") == 0
                   ? ColorScheme::Dark
                   : ColorScheme::Light;
    }

    static void onChanged(GSettings *, const char *, gpointer self) {
        auto *scheme = static_cast<Desktop *>(self);
        scheme->tell(scheme->read());
    }

    const Handler handler_;
    /// What the loop tells is dropped with it.
    QObject receiver_;
    std::promise<std::optional<ColorScheme>> firstPromise_;
    std::future<std::optional<ColorScheme>> first_ = firstPromise_.get_future();
    GioBus bus_;
    /// Belongs to the thread of the loop.
    GObjectPtr<GSettings> settings_;
    // Last, so that its thread has ended before anything that the thread uses.
    BackgroundLoop loop_;
};

PortalSystemSettings::PortalSystemSettings(QDBusConnection bus)
    : bus_(std::move(bus)), portalWatch_(kPortal, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&portalWatch_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                if (owner.isEmpty()) {
                    portalVanished();
                } else {
                    isPortalPresent_ = true;
                    askPortal();
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

PortalSystemSettings::~PortalSystemSettings() = default;

void PortalSystemSettings::setAppearanceHandler(std::function<void()> handler) {
    handler_ = std::move(handler);
}

void PortalSystemSettings::waitForPortal(const QDeadlineTimer &patience) {
    const QDBusMessage answer =
        bus_.call(appearanceQuestion(), QDBus::Block, static_cast<int>(patience.remainingTime()));
    // The answer to a call that was given up is lost; the next one is waited for by nobody.
    if (isTimeout(answer))
        askPortal();
    takeAnswer(answer);
}

void PortalSystemSettings::askPortal() {
    auto *call = new QDBusPendingCallWatcher(
        bus_.asyncCall(appearanceQuestion(), kLongestPortalCallMilliseconds), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        takeAnswer(call->reply());
    });
}

void PortalSystemSettings::takeAnswer(const QDBusMessage &answer) {
    if (isAnswer(answer)) {
        const auto all =
            qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().value(0)).value(kNamespace);
        fromPortal_ = schemeIn(all.value(kColorSchemeKey));
        accent_ = accentIn(all.value(kAccentKey));
        isContrastHigh_ = isContrastHighIn(all.value(kContrastKey));
    }
    if (!fromPortal_)
        askDesktop();
    update();
}

void PortalSystemSettings::takeChange(const QString &space, const QString &key,
                                      const QDBusVariant &value) {
    if (space != kNamespace)
        return;
    if (key == kAccentKey)
        accent_ = accentIn(value.variant());
    else if (key == kContrastKey)
        isContrastHigh_ = isContrastHighIn(value.variant());
    else if (const auto scheme = schemeIn(value.variant()); key == kColorSchemeKey && scheme)
        fromPortal_ = scheme;
    update();
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
    desktop_ = std::make_unique<Desktop>([this](std::optional<ColorScheme> scheme) {
        fromDesktop_ = scheme;
        update();
    });
}

void PortalSystemSettings::update() {
    const ColorScheme scheme = fromPortal_.value_or(fromDesktop_.value_or(ColorScheme::Light));
    const Appearance appearance{scheme, accent_, isContrastHigh_};
    const Appearance before = std::exchange(told_, appearance);
    if (appearance == before)
        return;
    const auto handler = handler_;
    if (scheme != before.scheme)
        Q_EMIT colorSchemeChanged();
    if (handler)
        handler();
}

}  // namespace kestrelbay
