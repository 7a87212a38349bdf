#include <algorithm>
#include <array>
#include <memory>
#include <span>
#include <utility>

#include <QStringList>

#include "platform/linux/glib/GObjectPtr.h"
#include "platform/linux/shortcuts/ShortcutTables.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

struct Table {
    const char *schema;
    /// Who acts on it; none for the window manager.
    const char *program;
};

constexpr std::array kGnome{
    Table{"org.gnome.mutter", nullptr},
    Table{"org.gnome.desktop.wm.keybindings", nullptr},
    Table{"org.gnome.mutter.keybindings", nullptr},
    Table{"org.gnome.shell.keybindings", nullptr},
    Table{"org.gnome.settings-daemon.plugins.media-keys", "gnome-settings-daemon"},
};
constexpr std::array kMate{
    Table{"org.mate.Marco.global-keybindings", nullptr},
    Table{"org.mate.Marco.window-keybindings", nullptr},
    Table{"org.mate.SettingsDaemon.plugins.media-keys", "mate-settings-daemon"},
};
constexpr std::array kCinnamon{
    Table{"org.cinnamon.muffin", nullptr},
    Table{"org.cinnamon.desktop.keybindings.wm", nullptr},
    Table{"org.cinnamon.muffin.keybindings", nullptr},
    Table{"org.cinnamon.desktop.keybindings", nullptr},
    Table{"org.cinnamon.desktop.keybindings.media-keys", "cinnamon-settings-daemon"},
};

/// Hotkeys that the user has added: a list of folders, in each of which lie a name and a
/// hotkey.
struct CustomTable {
    const char *listSchema;
    const char *listKey;
    /// Before and after each item of the list.
    QLatin1StringView pathBegin;
    QLatin1StringView pathEnd;
    const char *itemSchema;
    const char *program;
};

constexpr CustomTable kGnomeCustom{"org.gnome.settings-daemon.plugins.media-keys",
                                   "custom-keybindings",
                                   QLatin1StringView(""),
                                   QLatin1StringView(""),
                                   "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding",
                                   "gnome-settings-daemon"};
constexpr CustomTable kCinnamonCustom{
    "org.cinnamon.desktop.keybindings",
    "custom-list",
    QLatin1StringView("/org/cinnamon/desktop/keybindings/custom-keybindings/"),
    QLatin1StringView("/"),
    "org.cinnamon.desktop.keybindings.custom-keybinding",
    nullptr};

using SchemaPtr = std::unique_ptr<GSettingsSchema, ReleaseWith<g_settings_schema_unref>>;

/// Asked for, since GSettings ends the program over a schema that is missing.
SchemaPtr schemaCalled(const char *name) {
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    return SchemaPtr(source ? g_settings_schema_source_lookup(source, name, TRUE) : nullptr);
}

/// The texts of a text or of a list of texts; none of any other value.
QStringList textsOf(GSettings &settings, const QString &key) {
    const GVariantPtr value(g_settings_get_value(&settings, key.toUtf8().constData()));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
        return {QString::fromUtf8(g_variant_get_string(value.get(), nullptr))};
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY))
        return {};
    return textsOf(GStringList(g_variant_dup_strv(value.get(), nullptr)));
}

bool isList(GSettings &settings, const QString &key) {
    const GVariantPtr value(g_settings_get_value(&settings, key.toUtf8().constData()));
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY) != FALSE;
}

/// The command that takes this one hotkey away and leaves the others of the same action.
QString remedy(const char *schema, GSettings &settings, const QString &key, QStringList texts,
               const QString &held) {
    QString value = u"''"_s;
    if (isList(settings, key)) {
        texts.removeAll(held);
        value = texts.isEmpty() ? u"\"[]\""_s : u"\"['"_s + texts.join(u"', '"_s) + u"']\""_s;
    }
    return u"gsettings set %1 %2 %3"_s.arg(QLatin1StringView(schema), key, value);
}

/// A modifier key without a side, such as mutter's "Super", is either of the two.
bool isMeant(const LookedForKey &looked, const QString &text) {
    return std::ranges::any_of(std::array{u""_s, u"_L"_s, u"_R"_s}, [&](const QString &side) {
        return looked.isMeantBy(gtkAccelerator(text + side));
    });
}

std::optional<HotkeyHolder> holderIn(const Table &table, const LookedForKey &looked) {
    const SchemaPtr schema = schemaCalled(table.schema);
    if (!schema)
        return std::nullopt;
    const GObjectPtr<GSettings> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    const QStringList keys = textsOf(GStringList(g_settings_schema_list_keys(schema.get())));
    for (const QString &key : keys) {
        const QStringList texts = textsOf(*settings, key);
        for (const QString &text : texts) {
            if (isMeant(looked, text))
                return HotkeyHolder{.program = QLatin1StringView(table.program),
                                    .action = key,
                                    .remedy = remedy(table.schema, *settings, key, texts, text)};
        }
    }
    return std::nullopt;
}

std::optional<HotkeyHolder> holderIn(const CustomTable &table, const LookedForKey &looked) {
    const SchemaPtr list = schemaCalled(table.listSchema);
    const SchemaPtr item = schemaCalled(table.itemSchema);
    if (!list || !item || !g_settings_schema_has_key(list.get(), table.listKey) ||
        !g_settings_schema_has_key(item.get(), "name") ||
        !g_settings_schema_has_key(item.get(), "binding"))
        return std::nullopt;
    const GObjectPtr<GSettings> folders(g_settings_new_full(list.get(), nullptr, nullptr));
    for (const QString &folder : textsOf(*folders, QLatin1StringView(table.listKey))) {
        const QString path = table.pathBegin + folder + table.pathEnd;
        // GSettings ends the program over a path of another form.
        if (!path.startsWith(u'/') || !path.endsWith(u'/') || path.contains("//"_L1))
            continue;
        const GObjectPtr<GSettings> settings(
            g_settings_new_full(item.get(), nullptr, path.toUtf8().constData()));
        for (const QString &text : textsOf(*settings, u"binding"_s)) {
            if (looked.isMeantBy(gtkAccelerator(text)))
                return HotkeyHolder{.program = QLatin1StringView(table.program),
                                    .action = textsOf(*settings, u"name"_s).value(0)};
        }
    }
    return std::nullopt;
}

std::optional<HotkeyHolder> holderIn(std::span<const Table> tables, const LookedForKey &looked) {
    for (const Table &table : tables) {
        if (auto holder = holderIn(table, looked))
            return holder;
    }
    return std::nullopt;
}

}  // namespace

std::optional<HotkeyHolder> holderInGSettings(GSettingsDesktop desktop, const LookedForKey &key) {
    switch (desktop) {
        case GSettingsDesktop::Gnome:
            if (auto holder = holderIn(kGnomeCustom, key))
                return holder;
            return holderIn(kGnome, key);
        case GSettingsDesktop::Mate:
            return holderIn(kMate, key);
        case GSettingsDesktop::Cinnamon:
            if (auto holder = holderIn(kCinnamonCustom, key))
                return holder;
            return holderIn(kCinnamon, key);
    }
    return std::nullopt;
}

}  // namespace kestrelbay
