#include "model/RuleJson.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>
#include <vector>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// The one rule of a file that holds one object.
ShortcutRule decodeOne(const QByteArray &object) {
    const auto rules = decodeRules('[' + object + ']');
    EXPECT_TRUE(rules.has_value()) << object.constData();
    EXPECT_EQ(rules.value_or(std::vector<ShortcutRule>()).size(), 1U);
    return rules && rules->size() == 1 ? rules->front() : ShortcutRule();
}

ShortcutRule sampleRule() {
    return {.id = QUuid::fromString(u"3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D"_s),
            .appName = u"Notes"_s,
            .appPath = u"/System/Applications/Notes.app"_s,
            .keyCode = KeyCode{45},
            .modifierFlags = ModifierFlags(1179658),
            .isEnabled = true,
            .repeatAction = RepeatAction::ToggleVisibility,
            .launchArguments = QString(),
            .argumentKind = ArgumentKind::None};
}

constexpr auto kSampleJson =
    R"({"id":"3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D","appName":"Notes",)"
    R"("appPath":"/System/Applications/Notes.app","keyCode":45,"modifierFlags":1179658,)"
    R"("isEnabled":true,"repeatAction":"toggleVisibility","launchArguments":"",)"
    R"("argumentKind":"none"})";

TEST(RuleJson, EmptyObjectDecodesToDefaults) {
    const ShortcutRule rule = decodeOne("{}");
    EXPECT_EQ(rule.id.version(), QUuid::Random);
    ShortcutRule expected;
    expected.id = rule.id;
    EXPECT_EQ(rule, expected);
}

TEST(RuleJson, EmptyObjectEncodesWithAllNineKeys) {
    const ShortcutRule rule = decodeOne("{}");
    const QByteArray id = rule.id.toByteArray(QUuid::WithoutBraces).toUpper();
    EXPECT_EQ(encodeRules({rule}),
              "[{\"id\":\"" + id +
                  R"(","appName":"","appPath":"","keyCode":0,"modifierFlags":0,"isEnabled":true,)"
                  R"("repeatAction":"keepOpen","launchArguments":"","argumentKind":"none"}])");
}

TEST(RuleJson, EncodesCompactlyInDeclaredOrder) {
    EXPECT_EQ(encodeRules({sampleRule()}), '[' + QByteArray(kSampleJson) + ']');
    EXPECT_EQ(encodeRules({}), "[]");
}

TEST(RuleJson, DecodesAllFields) {
    EXPECT_EQ(decodeOne(kSampleJson), sampleRule());
}

TEST(RuleJson, KeysMayComeInAnyOrder) {
    const ShortcutRule rule =
        decodeOne(R"({"argumentKind":"filePath","keyCode":17,"launchArguments":"-n"})");
    EXPECT_EQ(rule.argumentKind, ArgumentKind::FilePath);
    EXPECT_EQ(rule.launchArguments, u"-n"_s);
    EXPECT_EQ(rule.keyCode, KeyCode{17});
}

TEST(RuleJson, UnknownKeysAreSkipped) {
    EXPECT_EQ(decodeOne(R"({"later":{"a":[1,null]},"keyCode":3})").keyCode, KeyCode{3});
}

TEST(RuleJson, RoundTripKeepsEveryRule) {
    ShortcutRule full = sampleRule();
    full.isEnabled = false;
    full.repeatAction = RepeatAction::CycleWindows;
    full.launchArguments = u"a \"b\"\\\n\t\u0001 中文 😀 </x>"_s;
    full.argumentKind = ArgumentKind::LaunchArgs;
    full.keyCode = KeyCode{65535};
    full.modifierFlags = ModifierFlags(std::numeric_limits<std::uint64_t>::max());
    const std::vector<ShortcutRule> rules{full, ShortcutRule(), sampleRule()};
    EXPECT_EQ(decodeRules(encodeRules(rules)), rules);
}

TEST(RuleJson, ListOrderIsKept) {
    const auto rules = decodeRules(R"([{"appName":"b"},{"appName":"a"},{"appName":"c"}])");
    ASSERT_EQ(rules.value_or(std::vector<ShortcutRule>()).size(), 3U);
    EXPECT_EQ(rules->at(0).appName, u"b"_s);
    EXPECT_EQ(rules->at(1).appName, u"a"_s);
    EXPECT_EQ(rules->at(2).appName, u"c"_s);
}

TEST(RuleJson, MissingKindIsInferredFromTheArguments) {
    const auto kindOf = [](const char *arguments) {
        return decodeOne(QByteArray(R"({"launchArguments":")") + arguments + R"("})").argumentKind;
    };
    EXPECT_EQ(kindOf("  -n --fresh"), ArgumentKind::LaunchArgs);
    EXPECT_EQ(kindOf("things://path?query"), ArgumentKind::UrlScheme);
    EXPECT_EQ(kindOf("~/Documents"), ArgumentKind::FilePath);
    EXPECT_EQ(kindOf("notes.txt"), ArgumentKind::FilePath);
    EXPECT_EQ(kindOf("\\t"), ArgumentKind::None);
}

TEST(RuleJson, InferenceDoesNotChangeTheText) {
    EXPECT_EQ(decodeOne(R"({"launchArguments":"  -n --fresh"})").launchArguments,
              u"  -n --fresh"_s);
}

TEST(RuleJson, InferredKindIsWrittenOut) {
    EXPECT_TRUE(encodeRules({decodeOne(R"({"launchArguments":"-n"})")})
                    .contains(R"("argumentKind":"launchArgs")"));
}

TEST(RuleJson, UnknownRepeatActionIsKeepOpenAndLeavesTheRestAlone) {
    const ShortcutRule rule = decodeOne(R"({"keyCode":9,"repeatAction":"toggle","appName":"x"})");
    EXPECT_EQ(rule.repeatAction, RepeatAction::KeepOpen);
    EXPECT_EQ(rule.keyCode, KeyCode{9});
    EXPECT_EQ(rule.appName, u"x"_s);
}

TEST(RuleJson, UnknownKindIsInferredFromTheArguments) {
    EXPECT_EQ(
        decodeOne(R"({"launchArguments":"https://a.example","argumentKind":"web"})").argumentKind,
        ArgumentKind::UrlScheme);
}

TEST(RuleJson, UnreadableArgumentsAndKindGiveNone) {
    const ShortcutRule rule = decodeOne(R"({"launchArguments":7,"argumentKind":null})");
    EXPECT_EQ(rule.launchArguments, QString());
    EXPECT_EQ(rule.argumentKind, ArgumentKind::None);
}

TEST(RuleJson, GivenKindIsKeptEvenWhenTheTextSuggestsAnother) {
    EXPECT_EQ(decodeOne(R"({"launchArguments":"-n","argumentKind":"none"})").argumentKind,
              ArgumentKind::None);
}

TEST(RuleJson, KeyCodeOutOfRangeIsZero) {
    for (const char *number : {"70000", "65536", "-1", "1.5", "65535.5", "-0.5", "1e400", "-1e400",
                               "99999999999999999999999", "\"45\"", "true", "null", "[45]"})
        EXPECT_EQ(decodeOne(QByteArray("{\"keyCode\":") + number + "}").keyCode, KeyCode{0})
            << number;
}

TEST(RuleJson, WholeKeyCodesAreReadHoweverTheyAreWritten) {
    for (const char *number : {"45", "45.0", "4.5e1", "450E-1"})
        EXPECT_EQ(decodeOne(QByteArray("{\"keyCode\":") + number + "}").keyCode, KeyCode{45})
            << number;
    EXPECT_EQ(decodeOne(R"({"keyCode":65535})").keyCode, KeyCode{65535});
    EXPECT_EQ(decodeOne(R"({"keyCode":65535.0})").keyCode, KeyCode{65535});
    EXPECT_EQ(decodeOne(R"({"keyCode":65536.0})").keyCode, KeyCode{0});
}

TEST(RuleJson, ModifierFlagsAreExactOverAllSixtyFourBits) {
    for (const std::uint64_t bits :
         {std::uint64_t{1179658}, std::uint64_t{9007199254740993}, std::uint64_t{1} << 63U,
          (std::uint64_t{1} << 63U) + 1, std::numeric_limits<std::uint64_t>::max()}) {
        const QByteArray json = "{\"modifierFlags\":" + QByteArray::number(qulonglong{bits}) + "}";
        const ShortcutRule rule = decodeOne(json);
        EXPECT_EQ(rule.modifierFlags.bits(), bits);
        EXPECT_TRUE(encodeRules({rule}).contains(json.sliced(1, json.size() - 2)));
    }
}

TEST(RuleJson, ModifierFlagsOutOfRangeAreZero) {
    for (const char *number : {"18446744073709551616", "18446744073709551616.0", "-1", "0.5",
                               "1e30", "1e999", "\"8\"", "false", "null", "{}"})
        EXPECT_TRUE(
            decodeOne(QByteArray("{\"modifierFlags\":") + number + "}").modifierFlags.isEmpty())
            << number;
    EXPECT_EQ(decodeOne(R"({"modifierFlags":1048584.0})").modifierFlags.bits(), 1048584U);
}

TEST(RuleJson, HugeNumbersSpoilNothingElse) {
    const auto rules = decodeRules(
        R"([{"appName":"say \"1e999\" or -1e999","keyCode":-1e999,"later":[1e999,2]},{"keyCode":7}])");
    ASSERT_EQ(rules.value_or(std::vector<ShortcutRule>()).size(), 2U);
    EXPECT_EQ(rules->at(0).appName, u"say \"1e999\" or -1e999"_s);
    EXPECT_EQ(rules->at(0).keyCode, KeyCode{0});
    EXPECT_EQ(rules->at(1).keyCode, KeyCode{7});
}

TEST(RuleJson, MadeUpIdsAreThoseOfTheRulesAlone) {
    for (const char *text : {"[{},{\"keyCode\":1e999}]", "[{},{}]"}) {
        std::set<QUuid> madeUpIds;
        const auto rules = decodeRules(text, &madeUpIds);
        ASSERT_EQ(rules.value_or(std::vector<ShortcutRule>()).size(), 2U) << text;
        EXPECT_EQ(madeUpIds, (std::set{rules->at(0).id, rules->at(1).id})) << text;
    }
    std::set<QUuid> madeUpIds;
    EXPECT_EQ(decodeRules("[{},1]", &madeUpIds), std::nullopt);
    EXPECT_TRUE(madeUpIds.empty());
}

TEST(RuleJson, IsEnabledOfAnotherTypeIsTrue) {
    for (const char *value : {"\"false\"", "0", "null", "[]"})
        EXPECT_TRUE(decodeOne(QByteArray("{\"isEnabled\":") + value + "}").isEnabled) << value;
    EXPECT_FALSE(decodeOne(R"({"isEnabled":false})").isEnabled);
}

TEST(RuleJson, TextsOfAnotherTypeAreEmpty) {
    const ShortcutRule rule = decodeOne(R"({"appName":1,"appPath":["/x"],"launchArguments":{}})");
    EXPECT_EQ(rule.appName, QString());
    EXPECT_EQ(rule.appPath, QString());
    EXPECT_EQ(rule.launchArguments, QString());
}

TEST(RuleJson, IdThatIsNoUuidGivesANewOneOnEveryLoad) {
    const QByteArray json = R"({"id":"not a uuid"})";
    EXPECT_NE(decodeOne(json).id, decodeOne(json).id);
    EXPECT_EQ(decodeOne(json).id.version(), QUuid::Random);
}

TEST(RuleJson, OnlyTheCanonicalFormOfAUuidCounts) {
    const QUuid id = sampleRule().id;
    const auto idOf = [](const char *text) {
        return decodeOne(QByteArray(R"({"id":")") + text + R"("})").id;
    };
    EXPECT_EQ(idOf("3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D"), id);
    EXPECT_EQ(idOf("3f2a9c1e-6b7d-4e21-9a0c-5d8e7f1b2c3d"), id);
    EXPECT_NE(idOf("{3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D}"), id);
    EXPECT_NE(idOf("3F2A9C1E6B7D4E219A0C5D8E7F1B2C3D"), id);
    EXPECT_NE(idOf("3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D "), id);
    EXPECT_NE(idOf("3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3G"), id);
    EXPECT_FALSE(idOf("").isNull());
}

TEST(RuleJson, IdIsWrittenInUpperCase) {
    EXPECT_TRUE(encodeRules({decodeOne(R"({"id":"3f2a9c1e-6b7d-4e21-9a0c-5d8e7f1b2c3d"})")})
                    .contains(R"("id":"3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D")"));
}

TEST(RuleJson, KeyCodeZeroWithFlagsIsAHotkey) {
    const ShortcutRule rule = decodeOne(R"({"keyCode":0,"modifierFlags":1048584})");
    EXPECT_EQ(rule.keyCode, key::kA);
    EXPECT_EQ(rule.modifierFlags, modifier::kCommand | modifier::kLeftCommand);
}

TEST(RuleJson, WhatIsNotAnArrayOfObjectsYieldsNothing) {
    for (const char *text :
         {"", " ", "{}", "null", "1", R"("[]")", "[1]", "[{},1]", "[[]]", "[null]", "[{}", "[{},]",
          "[] []", "nonsense", R"([{"keyCode":1e999.}])", R"([{"keyCode":01e999}])",
          R"([{"a":1 "b":2}])"})
        EXPECT_EQ(decodeRules(text), std::nullopt) << text;
}

TEST(RuleJson, EmptyArrayYieldsNoRules) {
    EXPECT_EQ(decodeRules("[]"), std::vector<ShortcutRule>());
    EXPECT_EQ(decodeRules(" [\n]\n"), std::vector<ShortcutRule>());
}

TEST(RuleJson, ByteOrderMarkIsSkipped) {
    EXPECT_EQ(decodeRules("\xEF\xBB\xBF[]"), std::vector<ShortcutRule>());
}

TEST(RuleJson, InvalidUtf8YieldsNothing) {
    EXPECT_EQ(decodeRules(R"([{"appName":")"
                          "\xFF\xFE"
                          R"("}])"),
              std::nullopt);
    EXPECT_EQ(decodeRules(R"([{"appName":")"
                          "\xC3"
                          R"("}])"),
              std::nullopt);
    EXPECT_EQ(decodeRules(QByteArray(1, '\0') + "[]"), std::nullopt);
}

TEST(RuleJson, HugeNestingIsSafe) {
    constexpr int kDepth = 100'000;
    EXPECT_EQ(decodeRules(QByteArray(kDepth, '[')), std::nullopt);
    EXPECT_EQ(decodeRules(QByteArray(kDepth, '[') + QByteArray(kDepth, ']')), std::nullopt);
    const auto rules = decodeRules(R"([{"keyCode":7,"later":)" + QByteArray(kDepth, '[') +
                                   QByteArray(kDepth, ']') + "}]");
    ASSERT_EQ(rules.value_or(std::vector<ShortcutRule>()).size(), 1U);
    EXPECT_EQ(rules->front().keyCode, KeyCode{7});
}

TEST(RuleJson, OfRepeatedKeysTheLastCountsWhateverItsValue) {
    EXPECT_EQ(decodeOne(R"({"keyCode":7,"keyCode":8})").keyCode, KeyCode{8});
    for (const char *value : {"null", "-8", R"("8")", "[8]", R"({"keyCode":8})"})
        EXPECT_EQ(decodeOne(QByteArray(R"({"keyCode":7,"keyCode":)") + value + '}').keyCode,
                  KeyCode{0})
            << value;
}

TEST(RuleJson, FieldsAreThoseOfTheObjectItself) {
    const ShortcutRule rule = decodeOne(
        R"({"later":{"keyCode":3,"isEnabled":false},"appName":["x",{"appPath":"/x"}],"appPath":"/y"})");
    EXPECT_EQ(rule.keyCode, KeyCode{0});
    EXPECT_TRUE(rule.isEnabled);
    EXPECT_EQ(rule.appName, QString());
    EXPECT_EQ(rule.appPath, u"/y"_s);
}

TEST(RuleJson, FieldsOfOneRuleAreNoneOfTheNext) {
    const auto rules = decodeRules(R"([{"appName":"a","isEnabled":false,"keyCode":3},{}])");
    ASSERT_EQ(rules.value_or(std::vector<ShortcutRule>()).size(), 2U);
    ShortcutRule plain;
    plain.id = rules->at(1).id;
    EXPECT_EQ(rules->at(1), plain);
}

TEST(RuleJson, TextsAreWrittenAsTheyAreButForWhatJsonEscapes) {
    const auto written = [](const QString &name) {
        ShortcutRule rule = sampleRule();
        rule.appName = name;
        EXPECT_EQ(decodeRules(encodeRules({rule})), std::vector{rule});
        return encodeRules({rule}).split(',').at(1);
    };
    EXPECT_EQ(written(u"\u007f/é€😀'"_s), "\"appName\":\"\x7f/é€😀'\"");
    const std::map<QString, QByteArray> escapes{
        {u"\""_s, R"(\")"},     {u"\\"_s, R"(\\)"},         {u"\b"_s, R"(\b)"},
        {u"\f"_s, R"(\f)"},     {u"\n"_s, R"(\n)"},         {u"\r"_s, R"(\r)"},
        {u"\t"_s, R"(\t)"},     {u"\u0001"_s, R"(\u0001)"}, {u"\u001f"_s, R"(\u001f)"},
        {QChar(0), R"(\u0000)"}};
    for (const auto &[text, escape] : escapes)
        EXPECT_EQ(written(u"é"_s + text + u"x"_s), R"("appName":"é)" + escape + R"(x")");
}

TEST(RuleJson, LoneSurrogatesEncodeAsValidText) {
    ShortcutRule rule = sampleRule();
    rule.appName = u"a"_s + QChar(0xD800) + u"b"_s;
    rule.launchArguments = QString(QChar(0xDC00));
    const auto decoded = decodeRules(encodeRules({rule}));
    ASSERT_EQ(decoded.value_or(std::vector<ShortcutRule>()).size(), 1U);
    EXPECT_TRUE(decoded->front().appName.startsWith(u'a'));
    EXPECT_TRUE(decoded->front().appName.endsWith(u'b'));
    EXPECT_EQ(decoded->front().appPath, rule.appPath);
}

}  // namespace

}  // namespace kestrelbay
