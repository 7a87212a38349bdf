#include "platform/linux/desktop/DesktopColorScheme.h"

#include <memory>
#include <utility>

namespace kestrelbay {

namespace {

constexpr const char *kSchema = "org.gnome.desktop.interface";
constexpr const char *kKey = "color-scheme";

using GSettingsSchemaPtr = std::unique_ptr<GSettingsSchema, ReleaseWith<g_settings_schema_unref>>;

GObjectPtr<GSettings> interfaceSettings() {
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    if (source == nullptr)
        return nullptr;
    // Asked for, since GSettings ends the program over a schema or key that is missing.
    const GSettingsSchemaPtr schema(g_settings_schema_source_lookup(source, kSchema, TRUE));
    if (!schema || !g_settings_schema_has_key(schema.get(), kKey))
        return nullptr;
    return GObjectPtr<GSettings>(g_settings_new_full(schema.get(), nullptr, nullptr));
}

}  // namespace

DesktopColorScheme::DesktopColorScheme(Handler handler) : handler_(std::move(handler)) {
    loop_.post([this] { start(); });
}

DesktopColorScheme::~DesktopColorScheme() {
    loop_.post([this] {
        if (settings_)
            g_signal_handlers_disconnect_by_data(settings_.get(), this);
        settings_.reset();
    });
}

std::optional<ColorScheme> DesktopColorScheme::waitForFirst(std::chrono::milliseconds longest) {
    const bool isKnown = first_.wait_for(longest) == std::future_status::ready;
    return isKnown ? first_.get() : std::nullopt;
}

void DesktopColorScheme::start() {
    settings_ = interfaceSettings();
    if (settings_)
        g_signal_connect(settings_.get(), "changed::color-scheme",
                         G_CALLBACK(&DesktopColorScheme::onChanged), this);
    const std::optional<ColorScheme> scheme = read();
    firstPromise_.set_value(scheme);
    tell(scheme);
    // GSettings hears of changes over it.
    bus_.keep();
}

void DesktopColorScheme::tell(std::optional<ColorScheme> scheme) {
    QMetaObject::invokeMethod(
        &receiver_, [handler = handler_, scheme] { handler(scheme); }, Qt::QueuedConnection);
}

std::optional<ColorScheme> DesktopColorScheme::read() const {
    if (!settings_)
        return std::nullopt;
    const GVariantPtr value(g_settings_get_value(settings_.get(), kKey));
    const bool isText = g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING);
    return isText && qstrcmp(g_variant_get_string(value.get(), nullptr), "prefer-dark") == 0
               ? ColorScheme::Dark
               : ColorScheme::Light;
}

void DesktopColorScheme::onChanged(GSettings *, const char *, gpointer self) {
    auto *scheme = static_cast<DesktopColorScheme *>(self);
    scheme->tell(scheme->read());
}

}  // namespace kestrelbay
