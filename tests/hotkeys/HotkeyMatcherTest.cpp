#include "hotkeys/HotkeyMatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

ShortcutRule rule(std::uint16_t keyCode, std::uint64_t flags, const QString &path = u"/App"_s) {
    return {.appPath = path, .keyCode = KeyCode{keyCode}, .modifierFlags = ModifierFlags(flags)};
}

bool matches(const ShortcutRule &rule, std::uint16_t pressed, const std::set<KeyCode> &held) {
    return HotkeyMatcher({rule}).firstMatch(KeyCode{pressed}, buildDetailedFlags(held)).has_value();
}

using namespace key;

TEST(HotkeyMatcher, SideBitsWantExactlyThatSide) {
    const ShortcutRule leftCommandT = rule(17, 0x100008);
    EXPECT_TRUE(matches(leftCommandT, 17, {kLeftCommand}));
    EXPECT_FALSE(matches(leftCommandT, 17, {kRightCommand}));
    EXPECT_FALSE(matches(leftCommandT, 17, {kLeftCommand, kRightCommand}));
    EXPECT_FALSE(matches(leftCommandT, 17, {kLeftCommand, kLeftShift}));
    EXPECT_FALSE(matches(leftCommandT, 17, {}));
    EXPECT_FALSE(matches(leftCommandT, 16, {kLeftCommand}));
}

TEST(HotkeyMatcher, GenericBitsTakeEitherSide) {
    const ShortcutRule commandT = rule(17, 0x100000);
    EXPECT_TRUE(matches(commandT, 17, {kLeftCommand}));
    EXPECT_TRUE(matches(commandT, 17, {kRightCommand}));
    EXPECT_TRUE(matches(commandT, 17, {kLeftCommand, kRightCommand}));
    EXPECT_FALSE(matches(commandT, 17, {kLeftCommand, kLeftOption}));
}

TEST(HotkeyMatcher, SideBitOfOnlyOneOfTwoModifiersNeverMatches) {
    // Option and Control, but only the side of Option.
    const ShortcutRule half = rule(17, 0x80000 | 0x40000 | 0x20);
    for (const KeyCode control : {kLeftControl, kRightControl}) {
        EXPECT_FALSE(matches(half, 17, {kLeftOption, control}));
        EXPECT_FALSE(matches(half, 17, {kRightOption, control}));
    }
    EXPECT_FALSE(matches(half, 17, {kLeftOption}));
}

TEST(HotkeyMatcher, RuleWithoutAnApplicationNeverMatches) {
    EXPECT_FALSE(matches(rule(17, 0x100008, QString()), 17, {kLeftCommand}));
}

TEST(HotkeyMatcher, UnsetRuleNeverMatches) {
    EXPECT_FALSE(matches(rule(0, 0), 0, {}));
    EXPECT_FALSE(matches(rule(0, 0), 17, {}));
}

TEST(HotkeyMatcher, KeyCodeZeroWithFlagsIsTheKeyA) {
    const ShortcutRule leftCommandA = rule(0, 0x100008);
    EXPECT_TRUE(matches(leftCommandA, 0, {kLeftCommand}));
    EXPECT_FALSE(matches(leftCommandA, 1, {kLeftCommand}));
    EXPECT_FALSE(matches(leftCommandA, 0, {}));
}

TEST(HotkeyMatcher, KeyWithoutModifiersMatchesOnlyWithoutModifiers) {
    EXPECT_TRUE(matches(rule(96, 0), 96, {}));
    EXPECT_FALSE(matches(rule(96, 0), 96, {kLeftShift}));
}

TEST(HotkeyMatcher, BitsOutsideTheMasksTakeNoPart) {
    const std::uint64_t others = ~std::uint64_t{0x1E0000 | 0x207F};
    EXPECT_TRUE(matches(rule(17, 0x100008 | others), 17, {kLeftCommand}));
    EXPECT_TRUE(HotkeyMatcher({rule(17, 0x100008)})
                    .firstMatch(KeyCode{17}, ModifierFlags(0x100008 | others)));
    // Foreign bits make key code 0 a hotkey on the bare key A.
    EXPECT_TRUE(matches(rule(0, 0x10000), 0, {}));
}

TEST(HotkeyMatcher, FirstRuleOfTheListWins) {
    std::vector<ShortcutRule> rules{rule(17, 0x100008, QString()), rule(0, 0), rule(18, 0x100000),
                                    rule(17, 0x100000), rule(17, 0x100008)};
    const ModifierFlags command = buildDetailedFlags({kLeftCommand});
    EXPECT_EQ(HotkeyMatcher(rules).firstMatch(KeyCode{17}, command), 3U);
    rules[3].isEnabled = false;
    EXPECT_EQ(HotkeyMatcher(rules).firstMatch(KeyCode{17}, command), 3U);
    std::swap(rules[2], rules[4]);
    EXPECT_EQ(HotkeyMatcher(rules).firstMatch(KeyCode{17}, command), 2U);
}

TEST(HotkeyMatcher, NoRulesNoMatch) {
    EXPECT_EQ(HotkeyMatcher().firstMatch(KeyCode{17}, ModifierFlags()), std::nullopt);
}

/// What a match means, said once more in the plainest way.
bool plainMatch(const ShortcutRule &rule, KeyCode pressed, std::uint64_t current) {
    const std::uint64_t flags = rule.modifierFlags.bits();
    if (rule.appPath.isEmpty())
        return false;
    if (rule.keyCode != KeyCode{0} ? rule.keyCode != pressed
                                   : (flags == 0 || pressed != KeyCode{0}))
        return false;
    if (((flags ^ current) & 0x1E0000) != 0)
        return false;
    return (flags & 0x207F) == 0 || (flags & 0x207F) == (current & 0x207F);
}

TEST(HotkeyMatcher, AgreesWithThePlainRuleForAllModifierSets) {
    for (unsigned ruleKeys = 0; ruleKeys < 256; ++ruleKeys) {
        for (const bool genericOnly : {false, true}) {
            std::set<KeyCode> ruleSet;
            for (std::size_t i = 0; i < 8; ++i) {
                if ((ruleKeys >> i & 1U) != 0)
                    ruleSet.insert(kModifierKeyCodes[i]);
            }
            ModifierFlags flags = buildDetailedFlags(ruleSet);
            if (genericOnly)
                flags = flags & modifier::kGenericMask;
            for (const std::uint16_t keyCode : {std::uint16_t{0}, std::uint16_t{17}}) {
                const ShortcutRule candidate = rule(keyCode, flags.bits());
                const HotkeyMatcher matcher({candidate});
                for (unsigned heldKeys = 0; heldKeys < 256; ++heldKeys) {
                    std::set<KeyCode> held;
                    for (std::size_t i = 0; i < 8; ++i) {
                        if ((heldKeys >> i & 1U) != 0)
                            held.insert(kModifierKeyCodes[i]);
                    }
                    const ModifierFlags current = buildDetailedFlags(held);
                    ASSERT_EQ(matcher.firstMatch(KeyCode{keyCode}, current).has_value(),
                              plainMatch(candidate, KeyCode{keyCode}, current.bits()))
                        << keyCode << ' ' << flags.bits() << ' ' << current.bits();
                }
            }
        }
    }
}

/// Rules on few keys, so that many have the same one: with and without side bits, with foreign
/// bits, unset, without an application, disabled.
std::vector<ShortcutRule> anyRules(std::mt19937 &random) {
    const auto oneOf = [&](const std::vector<std::uint64_t> &values) {
        return values[random() % values.size()];
    };
    std::vector<ShortcutRule> rules(random() % 40);
    for (ShortcutRule &rule : rules) {
        rule.appPath = random() % 8 == 0 ? QString() : u"/App"_s;
        rule.isEnabled = random() % 4 != 0;
        rule.keyCode = KeyCode{static_cast<std::uint16_t>(oneOf({0, 0, 17, 17, 18, 55, 0xffff}))};
        const std::uint64_t few = oneOf({0, 0x100000, 0x100008, 0x100010, 0x100018, 0x120002, 0x8});
        const std::uint64_t any = (std::uint64_t{random()} << 32U | random()) & 0x3E2080;
        rule.modifierFlags = ModifierFlags(random() % 3 == 0 ? few | any : few);
    }
    return rules;
}

TEST(HotkeyMatcher, AgreesWithAWalkThroughTheListForAnyRules) {
    std::mt19937 random(1);
    for (int list = 0; list < 2000; ++list) {
        const std::vector<ShortcutRule> rules = anyRules(random);
        const HotkeyMatcher matcher(rules);
        for (const ShortcutRule &pressed : anyRules(random)) {
            const ModifierFlags current = pressed.modifierFlags;
            const auto found = std::ranges::find_if(rules, [&](const ShortcutRule &rule) {
                return plainMatch(rule, pressed.keyCode, current.bits());
            });
            const std::optional<std::size_t> match = matcher.firstMatch(pressed.keyCode, current);
            ASSERT_EQ(match.value_or(rules.size()), static_cast<std::size_t>(found - rules.begin()))
                << "list " << list << ", key " << toNumber(pressed.keyCode) << ", flags "
                << current.bits();
        }
    }
}

TEST(HotkeyMatcher, TellsTheMatchableHotkeysOfItsRules) {
    std::mt19937 random(1);
    for (int list = 0; list < 2000; ++list) {
        const std::vector<ShortcutRule> rules = anyRules(random);
        std::set<Hotkey> hotkeys;
        for (const ShortcutRule &rule : rules) {
            if (const std::optional<Hotkey> hotkey = matchableHotkey(rule))
                hotkeys.insert(*hotkey);
        }
        ASSERT_EQ(HotkeyMatcher(rules).matchableHotkeys(),
                  std::vector<Hotkey>(hotkeys.begin(), hotkeys.end()))
            << "list " << list;
    }
}

TEST(MatchableHotkey, HasOnlyTheBitsThatCount) {
    EXPECT_EQ(matchableHotkey(rule(17, 0x110108)),
              (Hotkey{KeyCode{17}, modifier::kCommand | modifier::kLeftCommand}));
}

TEST(MatchableHotkey, NothingForRulesThatCanNeverMatch) {
    EXPECT_EQ(matchableHotkey(rule(17, 0x100008, QString())), std::nullopt);
    EXPECT_EQ(matchableHotkey(rule(0, 0)), std::nullopt);
    EXPECT_EQ(matchableHotkey(rule(17, 0x80000 | 0x40000 | 0x20)), std::nullopt);
    EXPECT_EQ(matchableHotkey(rule(17, 0x8)), std::nullopt);
    EXPECT_EQ(matchableHotkey(rule(55, 0x100008)), std::nullopt);
}

TEST(MatchableHotkey, EverySetOfHeldModifiersCanBePressed) {
    for (unsigned keys = 0; keys < 256; ++keys) {
        std::set<KeyCode> held;
        for (std::size_t i = 0; i < 8; ++i) {
            if ((keys >> i & 1U) != 0)
                held.insert(kModifierKeyCodes[i]);
        }
        const ModifierFlags flags = buildDetailedFlags(held);
        EXPECT_TRUE(canBePressed({KeyCode{17}, flags}));
        EXPECT_TRUE(canBePressed({KeyCode{17}, flags & modifier::kGenericMask}));
    }
}

}  // namespace

}  // namespace kestrelbay
