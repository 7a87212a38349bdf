#include "model/ShortcutRule.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QString hotkey(std::uint16_t keyCode, std::uint64_t flags) {
    ShortcutRule rule;
    rule.keyCode = KeyCode{keyCode};
    rule.modifierFlags = ModifierFlags(flags);
    return rule.hotkeyString();
}

TEST(ShortcutRule, NewRuleHasDefaults) {
    const ShortcutRule rule;
    EXPECT_EQ(rule.id.version(), QUuid::Random);
    EXPECT_EQ(rule.appName, QString());
    EXPECT_EQ(rule.appPath, QString());
    EXPECT_EQ(rule.keyCode, KeyCode{0});
    EXPECT_TRUE(rule.modifierFlags.isEmpty());
    EXPECT_TRUE(rule.isEnabled);
    EXPECT_EQ(rule.repeatAction, RepeatAction::KeepOpen);
    EXPECT_EQ(rule.launchArguments, QString());
    EXPECT_EQ(rule.argumentKind, ArgumentKind::None);
}

TEST(ShortcutRule, EveryNewRuleHasAnotherId) {
    EXPECT_NE(ShortcutRule().id, ShortcutRule().id);
}

TEST(ShortcutRule, EqualityLooksAtEveryField) {
    const ShortcutRule rule;
    const auto differs = [&rule](auto change) {
        ShortcutRule other = rule;
        EXPECT_EQ(other, rule);
        change(other);
        return other != rule;
    };
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.id = QUuid::createUuid(); }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.appName = u"x"_s; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.appPath = u"x"_s; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.keyCode = KeyCode{1}; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.modifierFlags = modifier::kShift; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.isEnabled = false; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.repeatAction = RepeatAction::CycleWindows; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.launchArguments = u"x"_s; }));
    EXPECT_TRUE(differs([](ShortcutRule &r) { r.argumentKind = ArgumentKind::FilePath; }));
}

TEST(ShortcutRule, HotkeyStringIsModifiersThenKey) {
    EXPECT_EQ(hotkey(17, 0x100008), u"L⌘T"_s);
    EXPECT_EQ(hotkey(49, 0), u"Space"_s);
    EXPECT_EQ(hotkey(36, 0x120000), u"⇧⌘Key(36)"_s);
}

TEST(ShortcutRule, HotkeyStringOfKeyCodeZeroShowsOnlyModifiers) {
    EXPECT_EQ(hotkey(0, 0x100008), u"L⌘"_s);
    EXPECT_EQ(hotkey(0, 0), QString());
}

TEST(ShortcutRule, RawTextsOfRepeatActions) {
    EXPECT_EQ(rawValue(RepeatAction::KeepOpen), u"keepOpen"_s);
    EXPECT_EQ(rawValue(RepeatAction::ToggleVisibility), u"toggleVisibility"_s);
    EXPECT_EQ(rawValue(RepeatAction::CycleWindows), u"cycleWindows"_s);
    for (const auto action :
         {RepeatAction::KeepOpen, RepeatAction::ToggleVisibility, RepeatAction::CycleWindows})
        EXPECT_EQ(repeatActionFromRawValue(rawValue(action)), action);
    EXPECT_EQ(repeatActionFromRawValue(u"KeepOpen"), std::nullopt);
    EXPECT_EQ(repeatActionFromRawValue(u""), std::nullopt);
}

TEST(ShortcutRule, RawTextsOfArgumentKinds) {
    EXPECT_EQ(rawValue(ArgumentKind::None), u"none"_s);
    EXPECT_EQ(rawValue(ArgumentKind::LaunchArgs), u"launchArgs"_s);
    EXPECT_EQ(rawValue(ArgumentKind::UrlScheme), u"urlScheme"_s);
    EXPECT_EQ(rawValue(ArgumentKind::FilePath), u"filePath"_s);
    for (const auto kind : {ArgumentKind::None, ArgumentKind::LaunchArgs, ArgumentKind::UrlScheme,
                            ArgumentKind::FilePath})
        EXPECT_EQ(argumentKindFromRawValue(rawValue(kind)), kind);
    EXPECT_EQ(argumentKindFromRawValue(u"filepath"), std::nullopt);
}

TEST(InferKind, NothingLeftAfterTrimmingIsNone) {
    for (const QStringView text : {u"", u" ", u"\t", u" \t \t"})
        EXPECT_EQ(ShortcutRule::inferKind(text), ArgumentKind::None);
}

TEST(InferKind, LineBreaksAreNotTrimmed) {
    EXPECT_EQ(ShortcutRule::inferKind(u"\n"), ArgumentKind::FilePath);
    EXPECT_EQ(ShortcutRule::inferKind(u"\n-n"), ArgumentKind::FilePath);
}

TEST(InferKind, OtherSpacesAreNotTrimmed) {
    EXPECT_EQ(ShortcutRule::inferKind(u"\u00A0-n"), ArgumentKind::FilePath);
}

TEST(InferKind, SchemeSeparatorAnywhereIsUrl) {
    EXPECT_EQ(ShortcutRule::inferKind(u"scheme://path?query"), ArgumentKind::UrlScheme);
    EXPECT_EQ(ShortcutRule::inferKind(u"http://a"), ArgumentKind::UrlScheme);
    EXPECT_EQ(ShortcutRule::inferKind(u"https://a"), ArgumentKind::UrlScheme);
    EXPECT_EQ(ShortcutRule::inferKind(u"-x a://b"), ArgumentKind::UrlScheme);
    EXPECT_EQ(ShortcutRule::inferKind(u"/a://b"), ArgumentKind::UrlScheme);
}

TEST(InferKind, SchemeWithoutSlashesIsNoUrl) {
    EXPECT_EQ(ShortcutRule::inferKind(u"mailto:a@b"), ArgumentKind::FilePath);
}

TEST(InferKind, SlashOrTildeIsPath) {
    EXPECT_EQ(ShortcutRule::inferKind(u"/tmp"), ArgumentKind::FilePath);
    EXPECT_EQ(ShortcutRule::inferKind(u"~/Documents"), ArgumentKind::FilePath);
    EXPECT_EQ(ShortcutRule::inferKind(u" ~"), ArgumentKind::FilePath);
}

TEST(InferKind, HyphenIsArguments) {
    EXPECT_EQ(ShortcutRule::inferKind(u"-n"), ArgumentKind::LaunchArgs);
    EXPECT_EQ(ShortcutRule::inferKind(u"  -n --fresh"), ArgumentKind::LaunchArgs);
}

TEST(InferKind, BareWordIsPath) {
    EXPECT_EQ(ShortcutRule::inferKind(u"notes.txt"), ArgumentKind::FilePath);
    EXPECT_EQ(ShortcutRule::inferKind(u"notes -n"), ArgumentKind::FilePath);
}

}  // namespace

}  // namespace kestrelbay
