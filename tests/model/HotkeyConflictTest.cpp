#include "model/HotkeyConflict.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr std::uint64_t kCommand = 0x100000;
constexpr std::uint64_t kLeftCommand = 0x100008;
constexpr std::uint64_t kRightCommand = 0x100010;
constexpr std::uint64_t kOption = 0x80000;
constexpr std::uint64_t kLeftOption = 0x80020;
constexpr std::uint64_t kRightOption = 0x80040;

struct Case {
    const char *what;
    std::uint16_t storedKey;
    std::uint64_t storedFlags;
    std::uint16_t recordedKey;
    std::uint64_t recordedFlags;
    bool isConflict;
};

constexpr Case kCases[] = {
    {"the same", 40, kLeftCommand, 40, kLeftCommand, true},
    {"another key", 40, kLeftCommand, 38, kLeftCommand, false},
    {"another modifier", 38, kLeftOption, 38, kLeftCommand, false},
    {"one modifier more", 38, kLeftOption, 38, kLeftOption | kLeftCommand, false},
    {"the other side", 38, kLeftOption, 38, kRightOption, false},
    {"stored for either side", 38, kOption, 38, kRightOption, true},
    {"recorded for either side", 40, kRightCommand, 40, kCommand, false},
    {"either side both", 40, kCommand, 40, kCommand, true},
    {"both sides against one", 40, kLeftCommand | kRightCommand, 40, kLeftCommand, false},
    {"bits that take no part", 40, kLeftCommand | 0x10000, 40, kLeftCommand, true},
    {"the key A", 0, kLeftCommand, 0, kLeftCommand, true},
    {"no hotkey set", 0, 0, 0, kLeftCommand, false},
};

TEST(HotkeyConflict, IsOneSided) {
    for (const Case &c : kCases) {
        const std::vector<ShortcutRule> rules{
            {.keyCode = KeyCode{c.storedKey}, .modifierFlags = ModifierFlags(c.storedFlags)}};
        const ShortcutRule *const found = conflictingRule(
            rules, QUuid::createUuid(), {KeyCode{c.recordedKey}, ModifierFlags(c.recordedFlags)});
        EXPECT_EQ(found != nullptr, c.isConflict) << c.what;
    }
}

TEST(HotkeyConflict, OwnRuleIsNone) {
    const ShortcutRule own{.keyCode = KeyCode{40}, .modifierFlags = ModifierFlags(kLeftCommand)};
    const Hotkey recorded{own.keyCode, own.modifierFlags};
    EXPECT_EQ(conflictingRule({own}, own.id, recorded), nullptr);
    ShortcutRule other = own;
    other.id = QUuid::createUuid();
    const std::vector<ShortcutRule> rules{own, other};
    EXPECT_EQ(conflictingRule(rules, own.id, recorded), &rules[1]);
}

TEST(HotkeyConflict, DisabledRulesAndThoseWithoutApplicationCount) {
    ShortcutRule rule{.keyCode = KeyCode{40}, .modifierFlags = ModifierFlags(kLeftCommand)};
    rule.isEnabled = false;
    EXPECT_NE(conflictingRule({rule}, {}, {rule.keyCode, rule.modifierFlags}), nullptr);
}

}  // namespace

}  // namespace kestrelbay
