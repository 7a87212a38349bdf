#include "preferences/RuleRowTexts.h"

#include <gtest/gtest.h>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "model/ShortcutRule.h"
#include "platform/HotkeyHolders.h"
#include "settings/L.h"
#include "settings/Language.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QString badge(const QString &arguments, ArgumentKind kind = ArgumentKind::LaunchArgs) {
    return argsBadgeText({.launchArguments = arguments, .argumentKind = kind});
}

TEST(RuleRowTexts, NameOrThatThereIsNone) {
    EXPECT_EQ(shownAppName({.appName = u"Firefox"_s}), u"Firefox"_s);
    EXPECT_EQ(shownAppName({}), u"No app selected"_s);
}

TEST(RuleRowTexts, HomeIsATilde) {
    EXPECT_EQ(abbreviatedPath(u"/home/me/x.desktop"_s, u"/home/me"_s), u"~/x.desktop"_s);
    EXPECT_EQ(abbreviatedPath(u"/home/me"_s, u"/home/me"_s), u"~"_s);
    EXPECT_EQ(abbreviatedPath(u"/home/mel/x"_s, u"/home/me"_s), u"/home/mel/x"_s);
    EXPECT_EQ(abbreviatedPath(u"/opt/home/me/x"_s, u"/home/me"_s), u"/opt/home/me/x"_s);
    EXPECT_EQ(abbreviatedPath(QString(), u"/home/me"_s), QString());
    EXPECT_EQ(abbreviatedPath(u"/opt/x"_s, u"/"_s), u"/opt/x"_s);
    EXPECT_EQ(abbreviatedPath(u"/opt/x"_s, QString()), u"/opt/x"_s);
}

TEST(RuleRowTexts, BadgeIsTheEndOfTheArgument) {
    EXPECT_EQ(badge(u" --a "_s), u"--a"_s);
    EXPECT_EQ(badge(u"123456789"_s), u"123456789"_s);
    EXPECT_EQ(badge(u"1234567890"_s), u"…234567890"_s);
    EXPECT_EQ(badge(u"abcdefghijkl"_s), u"…defghijkl"_s);
    EXPECT_EQ(badge(u"\t abcdefghijkl\t"_s), u"…defghijkl"_s);
}

TEST(RuleRowTexts, NoBadgeWithoutAnArgument) {
    EXPECT_EQ(badge(u"--a"_s, ArgumentKind::None), QString());
    EXPECT_EQ(badge(QString()), QString());
    EXPECT_EQ(badge(u" \t "_s), QString());
}

TEST(RuleRowTexts, LineBreaksBelongToTheArgument) {
    EXPECT_EQ(badge(u"a\n"_s), u"a\n"_s);
}

TEST(RuleRowTexts, BadgeCountsWhatReadersTakeForACharacter) {
    const QString flags = u"🇩🇪🇫🇷🇮🇹🇪🇸🇵🇹🇳🇱🇧🇪🇦🇹🇨🇭"_s;
    EXPECT_EQ(badge(flags), flags);
    EXPECT_EQ(badge(u"x"_s + flags), u"…"_s + flags);
    EXPECT_EQ(badge(u"e\u0301123456789"_s), u"…123456789"_s);
}

TEST(RuleRowTexts, ARefusalIsSaidAsFarAsItIsKnown) {
    const RefusedHotkey hotkey;
    const RefusedHotkey modifier{{}, key::kLeftCommand};
    const HotkeyHolder holder{.program = u"Marco"_s, .action = u"close"_s, .remedy = u"x=0"_s};
    EXPECT_EQ(refusalInWords(hotkey, {}, Language::en),
              QStringList{u"Another program is using this hotkey"_s});
    EXPECT_EQ(refusalInWords(hotkey, {}, Language::zh), QStringList{u"此快捷键已被其他程序占用"_s});
    EXPECT_EQ(refusalInWords(hotkey, holder, Language::en),
              (QStringList{u"Probably Marco is using this hotkey"_s, u"There it means: close"_s,
                           u"To free it: x=0"_s}));
    EXPECT_EQ(refusalInWords(hotkey, holder, Language::zh),
              (QStringList{u"此快捷键可能已被 Marco 占用"_s, u"对应的操作：close"_s,
                           u"解除占用：x=0"_s}));
    EXPECT_EQ(refusalInWords(modifier, {}, Language::en),
              QStringList{u"This hotkey never arrives: another program takes all keys "
                          u"pressed with this modifier"_s});
    EXPECT_EQ(refusalInWords(modifier, {}, Language::zh),
              QStringList{u"此快捷键无法送达：其他程序占用了与该修饰键一起按下的所有按键"_s});
    const RefusedHotkey unassigned{.hotkey = {}, .isUnassigned = true};
    EXPECT_EQ(refusalInWords(unassigned, holder, Language::en),
              QStringList{u"The desktop has no keys for this hotkey yet: choose some in its "
                          u"settings"_s});
    EXPECT_EQ(refusalInWords(unassigned, holder, Language::zh),
              QStringList{u"桌面尚未为此快捷键分配按键，请在桌面设置中选择"_s});
}

TEST(RuleRowTexts, OfTheRowAreInBothLanguages) {
    FakeUserDefaults defaults;
    Language::setDefaults(&defaults);
    const auto all = [] {
        return QStringList{L::recorderKeyboardHeld(),      L::hotkeyRefused(),
                           L::clearHotkeyOf(u"Firefox"_s), L::hotkeyOf(u"Firefox"_s),
                           L::enableRule(u"Firefox"_s),    L::advancedOptionsOf(u"Firefox"_s),
                           L::deleteRule(u"Firefox"_s),    L::recorderRecording()};
    };
    EXPECT_EQ(all(),
              (QStringList{u"Another program is using the keyboard, please try again"_s,
                           u"Another program is using this hotkey"_s, u"Clear hotkey of Firefox"_s,
                           u"Hotkey of Firefox"_s, u"Enable Firefox"_s,
                           u"Advanced Options: Firefox"_s, u"Delete Firefox"_s, u"recording"_s}));
    defaults.setString(u"appLanguage"_s, u"zh"_s);
    EXPECT_EQ(all(),
              (QStringList{u"其他程序正在占用键盘，请稍后再试"_s, u"此快捷键已被其他程序占用"_s,
                           u"清除快捷键：Firefox"_s, u"快捷键：Firefox"_s, u"启用 Firefox"_s,
                           u"高级选项：Firefox"_s, u"删除 Firefox"_s, u"正在录入"_s}));
    Language::setDefaults(nullptr);
}

}  // namespace

}  // namespace kestrelbay
