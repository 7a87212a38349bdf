#include "keys/ModifierFlags.h"

#include <gtest/gtest.h>

#include <map>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

std::uint64_t flagsOf(const std::set<KeyCode> &held) {
    return buildDetailedFlags(held).bits();
}
QString display(std::uint64_t bits) {
    return modifierDisplayString(ModifierFlags(bits));
}

TEST(ModifierFlags, EachModifierKeyGivesItsGenericAndItsSideBit) {
    const std::map<std::uint16_t, std::uint64_t> expected{
        {55, 0x100008}, {54, 0x100010}, {56, 0x20002}, {60, 0x20004},
        {58, 0x80020},  {61, 0x80040},  {59, 0x40001}, {62, 0x42000}};
    for (unsigned code = 0; code < 256; ++code) {
        const auto number = static_cast<std::uint16_t>(code);
        const auto found = expected.find(number);
        EXPECT_EQ(flagsOf({KeyCode{number}}), found == expected.end() ? 0 : found->second) << code;
        EXPECT_EQ(isModifierKeyCode(KeyCode{number}), found != expected.end()) << code;
    }
}

TEST(ModifierFlags, BothCommandKeysGiveBothSides) {
    EXPECT_EQ(flagsOf({key::kLeftCommand, key::kRightCommand}), 0x100018U);
}

TEST(ModifierFlags, LeftControlAlone) {
    EXPECT_EQ(flagsOf({key::kLeftControl}), 0x40001U);
}

TEST(ModifierFlags, BothControlKeysGiveBothSides) {
    EXPECT_EQ(flagsOf({key::kRightControl, key::kLeftControl}), 0x42001U);
}

TEST(ModifierFlags, CapsLockAndFnAreNoModifiers) {
    EXPECT_EQ(flagsOf({KeyCode{57}, KeyCode{63}}), 0U);
}

TEST(ModifierFlags, NothingHeldIsZero) {
    EXPECT_EQ(flagsOf({}), 0U);
}

TEST(ModifierFlags, AllHeldGiveAllBits) {
    EXPECT_EQ(flagsOf({kModifierKeyCodes.begin(), kModifierKeyCodes.end()}), 0x1E207FU);
}

TEST(ModifierDisplay, LeftShiftLeftCommand) {
    EXPECT_EQ(display(0x12000A), u"L⇧L⌘"_s);
}

TEST(ModifierDisplay, RightShiftLeftCommand) {
    EXPECT_EQ(display(0x12000C), u"R⇧L⌘"_s);
}

TEST(ModifierDisplay, GenericCommandIsBare) {
    EXPECT_EQ(display(0x100000), u"⌘"_s);
}

TEST(ModifierDisplay, GenericCommandAndShift) {
    EXPECT_EQ(display(0x120000), u"⇧⌘"_s);
}

TEST(ModifierDisplay, BothSidesAreBare) {
    EXPECT_EQ(display(0x40001 | 0x2000), u"⌃"_s);
}

TEST(ModifierDisplay, SideBitAloneShowsItsSide) {
    EXPECT_EQ(display(0x2000), u"R⌃"_s);
}

TEST(ModifierDisplay, NoFlagsShowNothing) {
    EXPECT_EQ(display(0), QString());
}

TEST(ModifierDisplay, OtherBitsShowNothing) {
    EXPECT_EQ(display(0x10000 | 0x800000), QString());
}

TEST(ModifierDisplay, FixedOrderControlOptionShiftCommand) {
    EXPECT_EQ(display(0x1E0000), u"⌃⌥⇧⌘"_s);
    EXPECT_EQ(display(0x1E0000 | 0x2000 | 0x40 | 0x4 | 0x10), u"R⌃R⌥R⇧R⌘"_s);
    EXPECT_EQ(display(0x1E0000 | 0x1 | 0x20 | 0x2 | 0x8), u"L⌃L⌥L⇧L⌘"_s);
}

TEST(ModifierDisplay, SymbolsHaveTheirCodePoints) {
    EXPECT_EQ(display(0x40000), QString(QChar(0x2303)));
    EXPECT_EQ(display(0x80000), QString(QChar(0x2325)));
    EXPECT_EQ(display(0x20000), QString(QChar(0x21E7)));
    EXPECT_EQ(display(0x100000), QString(QChar(0x2318)));
}

}  // namespace

}  // namespace kestrelbay
