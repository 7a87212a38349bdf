#include "platform/linux/shortcuts/ShortcutTables.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/linux/glib/GObjectPtr.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {
namespace {

const LookedForKey kSuperT{modifier::kCommand, {XKB_KEY_t}};
const LookedForKey kSuperE{modifier::kCommand, {XKB_KEY_e}};
const LookedForKey kSuperL{modifier::kCommand, {XKB_KEY_l}};
const LookedForKey kSuperK{modifier::kCommand, {XKB_KEY_k}};
const LookedForKey kAltF4{modifier::kOption, {XKB_KEY_F4}};
const LookedForKey kLeftSuperAlone{{}, {XKB_KEY_Super_L}};
const LookedForKey kRightSuperAlone{{}, {XKB_KEY_Super_R}};

/// Sets a value, for the time of a test.
class Setting {
public:
    Setting(const char *schema, const char *path, const char *key, GVariant *value)
        : settings_(path ? g_settings_new_with_path(schema, path) : g_settings_new(schema)),
          key_(key) {
        EXPECT_TRUE(g_settings_set_value(settings_.get(), key_, value));
    }
    ~Setting() { g_settings_reset(settings_.get(), key_); }
    Setting(const Setting &) = delete;
    Setting &operator=(const Setting &) = delete;

private:
    GObjectPtr<GSettings> settings_;
    const char *key_;
};

TEST(GSettingsShortcuts, AreThoseOfTheDesktopThatIsAskedFor) {
    EXPECT_EQ(
        holderInGSettings(GSettingsDesktop::Gnome, kAltF4),
        (HotkeyHolder{
            {}, u"close"_s, u"gsettings set org.gnome.desktop.wm.keybindings close \"[]\""_s}));
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Mate, kAltF4),
              (HotkeyHolder{
                  {}, u"close"_s, u"gsettings set org.mate.Marco.window-keybindings close ''"_s}));
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Cinnamon, kSuperL)->action,
              u"looking-glass-keybinding"_s);
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kSuperK), std::nullopt);
}

TEST(GSettingsShortcuts, TheRemedyKeepsTheOtherHotkeysOfTheAction) {
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kSuperT)->remedy,
              u"gsettings set org.gnome.desktop.wm.keybindings switch-windows "
              "\"['<Alt>Tab']\""_s);
}

TEST(GSettingsShortcuts, NameTheProgramThatIsNotTheWindowManager) {
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kSuperE)->program,
              u"gnome-settings-daemon"_s);
}

TEST(GSettingsShortcuts, HaveTheKeyThatMutterTakesAlone) {
    EXPECT_EQ(
        holderInGSettings(GSettingsDesktop::Gnome, kLeftSuperAlone),
        (HotkeyHolder{{}, u"overlay-key"_s, u"gsettings set org.gnome.mutter overlay-key ''"_s}));
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kRightSuperAlone), std::nullopt);
    {
        // From version 46 on, by default.
        const Setting both("org.gnome.mutter", nullptr, "overlay-key",
                           g_variant_new_string("Super"));
        for (const LookedForKey &key : {kLeftSuperAlone, kRightSuperAlone})
            EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, key)->action, u"overlay-key"_s);
        EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kSuperK), std::nullopt);
    }
    const Setting off("org.gnome.mutter", nullptr, "overlay-key", g_variant_new_string(""));
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kLeftSuperAlone), std::nullopt);
}

TEST(GSettingsShortcuts, HaveThoseThatTheUserHasAdded) {
    constexpr const char *kPath = "/org/gnome/custom0/";
    constexpr const char *kItem = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
    const char *const paths[]{"not a path", kPath, nullptr};
    const Setting list("org.gnome.settings-daemon.plugins.media-keys", nullptr,
                       "custom-keybindings", g_variant_new_strv(paths, -1));
    const Setting name(kItem, kPath, "name", g_variant_new_string("Notes"));
    const Setting binding(kItem, kPath, "binding", g_variant_new_string("<Super>k"));
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Gnome, kSuperK),
              (HotkeyHolder{u"gnome-settings-daemon"_s, u"Notes"_s, {}}));
}

TEST(GSettingsShortcuts, HaveThoseThatTheUserHasAddedInCinnamon) {
    constexpr const char *kPath = "/org/cinnamon/desktop/keybindings/custom-keybindings/custom3/";
    constexpr const char *kItem = "org.cinnamon.desktop.keybindings.custom-keybinding";
    const char *const items[]{"custom3", nullptr};
    const char *const bindings[]{"<Super>k", nullptr};
    const Setting list("org.cinnamon.desktop.keybindings", nullptr, "custom-list",
                       g_variant_new_strv(items, -1));
    const Setting name(kItem, kPath, "name", g_variant_new_string("Notes"));
    const Setting binding(kItem, kPath, "binding", g_variant_new_strv(bindings, -1));
    EXPECT_EQ(holderInGSettings(GSettingsDesktop::Cinnamon, kSuperK)->action, u"Notes"_s);
}

}  // namespace
}  // namespace kestrelbay::testing
