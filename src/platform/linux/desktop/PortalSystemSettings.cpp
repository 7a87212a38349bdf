#include "platform/linux/desktop/PortalSystemSettings.h"

#include <chrono>
#include <utility>

namespace kestrelbay {

namespace {

constexpr std::chrono::milliseconds kLongestPortalWait{100};

constexpr BusWatch::Service kPortal{.name = "org.freedesktop.portal.Desktop",
                                    .path = "/org/freedesktop/portal/desktop",
                                    .interface = "org.freedesktop.portal.Settings"};
constexpr const char *kNamespace = "org.freedesktop.appearance";
constexpr const char *kColorSchemeKey = "color-scheme";
constexpr guint32 kPrefersDark = 1;

/// As the portal gives it; the older of its methods wraps it twice.
std::optional<ColorScheme> schemeIn(GVariant *value) {
    GVariantPtr inner(g_variant_ref(value));
    while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT))
        inner.reset(g_variant_get_variant(inner.get()));
    if (!g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_UINT32))
        return std::nullopt;
    return g_variant_get_uint32(inner.get()) == kPrefersDark ? ColorScheme::Dark
                                                             : ColorScheme::Light;
}

GVariant *question() {
    return g_variant_new("(ss)", kNamespace, kColorSchemeKey);
}

}  // namespace

PortalSystemSettings::PortalSystemSettings(BusListener &listener) : listener_(listener) {
    portal_ = std::make_unique<BusWatch>(
        listener, inbox_, kPortal,
        BusWatch::Handlers{.appeared = [this] { askPortal(); },
                           .vanished = [this] { portalVanished(); },
                           .signal = [this](const QString &member,
                                            GVariant *values) { takeSignal(member, values); }});
    inbox_->waitUntil([this] { return isSettled_; }, kLongestPortalWait);
    if (!fromPortal_)
        askDesktop();
}

PortalSystemSettings::~PortalSystemSettings() {
    inbox_->close();
}

void PortalSystemSettings::setColorSchemeHandler(std::function<void()> handler) {
    handler_ = std::move(handler);
}

void PortalSystemSettings::addObserver(std::function<void()> observer) {
    observers_.push_back(std::move(observer));
}

void PortalSystemSettings::askPortal() {
    isPortalPresent_ = true;
    portal_->call(kPortal.interface, "ReadOne", question(), [this](GVariant *reply) {
        if (reply) {
            takePortalValue(reply);
            return;
        }
        // Portals before version 2 of this interface.
        portal_->call(kPortal.interface, "Read", question(), [this](GVariant *older) {
            if (older)
                takePortalValue(older);
            else
                askDesktop();
        });
    });
}

void PortalSystemSettings::portalVanished() {
    isPortalPresent_ = false;
    if (!std::exchange(wasStarted_, true))
        portal_->startService();
    if (!fromPortal_)
        askDesktop();
}

void PortalSystemSettings::takeSignal(const QString &member, GVariant *parameters) {
    if (member != QLatin1String("SettingChanged") ||
        !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ssv)")))
        return;
    const char *space = nullptr;
    const char *key = nullptr;
    GVariant *value = nullptr;
    g_variant_get(parameters, "(&s&sv)", &space, &key, &value);
    const GVariantPtr owned(value);
    if (qstrcmp(space, kNamespace) != 0 || qstrcmp(key, kColorSchemeKey) != 0)
        return;
    if (const auto scheme = schemeIn(owned.get())) {
        fromPortal_ = scheme;
        update();
    }
}

void PortalSystemSettings::takePortalValue(GVariant *reply) {
    if (g_variant_is_of_type(reply, G_VARIANT_TYPE("(v)"))) {
        const GVariantPtr value(g_variant_get_child_value(reply, 0));
        fromPortal_ = schemeIn(value.get());
    }
    isSettled_ = true;
    if (!fromPortal_)
        askDesktop();
    update();
}

void PortalSystemSettings::askDesktop() {
    if (desktop_)
        return;
    desktop_ = std::make_unique<DesktopColorScheme>(listener_.loop(), inbox_,
                                                    [this](std::optional<ColorScheme> scheme) {
                                                        fromDesktop_ = scheme;
                                                        isSettled_ = true;
                                                        update();
                                                    });
}

void PortalSystemSettings::update() {
    const ColorScheme scheme = fromPortal_.value_or(fromDesktop_.value_or(ColorScheme::Light));
    if (std::exchange(scheme_, scheme) == scheme)
        return;
    for (const auto &observer : observers_)
        observer();
    if (const auto handler = handler_)
        handler();
}

}  // namespace kestrelbay
