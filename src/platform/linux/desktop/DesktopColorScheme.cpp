#include "platform/linux/desktop/DesktopColorScheme.h"

#include <utility>

#include "platform/linux/glib/GObjectPtr.h"

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

struct DesktopColorScheme::Remote {
    Remote(std::shared_ptr<MainThreadInbox> inboxOfOwner, Handler handlerOfOwner)
        : inbox(std::move(inboxOfOwner)), handler(std::move(handlerOfOwner)) {}

    void start() {
        settings = interfaceSettings();
        if (settings)
            g_signal_connect(settings.get(), "changed::color-scheme",
                             G_CALLBACK(&Remote::onChanged), this);
        tell();
    }

    void stop() {
        if (settings)
            g_signal_handlers_disconnect_by_data(settings.get(), this);
    }

    void tell() const {
        std::optional<ColorScheme> scheme;
        if (settings) {
            const GVariantPtr value(g_settings_get_value(settings.get(), kKey));
            const bool isText = g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING);
            scheme =
                isText && qstrcmp(g_variant_get_string(value.get(), nullptr), "prefer-dark") == 0
                    ? ColorScheme::Dark
                    : ColorScheme::Light;
        }
        inbox->post([kept = handler, scheme] { kept(scheme); });
    }

    static void onChanged(GSettings *, const char *, gpointer self) {
        static_cast<Remote *>(self)->tell();
    }

    const std::shared_ptr<MainThreadInbox> inbox;
    const Handler handler;
    GObjectPtr<GSettings> settings;
};

DesktopColorScheme::DesktopColorScheme(BackgroundLoop &loop, std::shared_ptr<MainThreadInbox> inbox,
                                       Handler handler)
    : loop_(loop), remote_(new Remote(std::move(inbox), std::move(handler))) {
    loop_.post([remote = remote_.get()] { remote->start(); });
}

DesktopColorScheme::~DesktopColorScheme() {
    loop_.post([remote = std::shared_ptr<Remote>(std::move(remote_))] { remote->stop(); });
}

}  // namespace kestrelbay
