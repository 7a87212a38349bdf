#include "platform/linux/wayland/gnome/EnabledExtensions.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

#include <QByteArrayList>
#include <QStringList>

#include "platform/linux/glib/GObjectPtr.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

namespace {

constexpr const char *kSchema = "org.gnome.shell";

using SchemaPtr = std::unique_ptr<GSettingsSchema, ReleaseWith<g_settings_schema_unref>>;

/// Null where they do not exist.
GObjectPtr<GSettings> shellSettings() {
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    const SchemaPtr schema(source ? g_settings_schema_source_lookup(source, kSchema, TRUE)
                                  : nullptr);
    return GObjectPtr<GSettings>(schema ? g_settings_new_full(schema.get(), nullptr, nullptr)
                                        : nullptr);
}

QStringList listed(GSettings *settings, const char *key) {
    return textsOf(GStringList(g_settings_get_strv(settings, key)));
}

bool setListed(GSettings *settings, const char *key, const QStringList &texts) {
    QByteArrayList bytes;
    for (const QString &text : texts)
        bytes.append(text.toUtf8());
    std::vector<const char *> values;
    std::ranges::transform(bytes, std::back_inserter(values), &QByteArray::constData);
    values.push_back(nullptr);
    return g_settings_set_strv(settings, key, values.data()) == TRUE;
}

}  // namespace

bool isExtensionEnabled(QLatin1StringView identifier) {
    const GObjectPtr<GSettings> settings = shellSettings();
    return settings && g_settings_get_boolean(settings.get(), "disable-user-extensions") == FALSE &&
           listed(settings.get(), "enabled-extensions").contains(identifier) &&
           !listed(settings.get(), "disabled-extensions").contains(identifier);
}

bool enableExtension(QLatin1StringView identifier) {
    const GObjectPtr<GSettings> settings = shellSettings();
    if (!settings)
        return false;
    QStringList enabled = listed(settings.get(), "enabled-extensions");
    QStringList disabled = listed(settings.get(), "disabled-extensions");
    bool isDone = true;
    if (disabled.removeAll(identifier) > 0)
        isDone = setListed(settings.get(), "disabled-extensions", disabled);
    if (!enabled.contains(identifier)) {
        enabled.append(identifier);
        isDone = setListed(settings.get(), "enabled-extensions", enabled) && isDone;
    }
    g_settings_sync();
    return isDone;
}

}  // namespace kestrelbay::gnome
