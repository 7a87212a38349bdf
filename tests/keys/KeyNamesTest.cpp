#include "keys/KeyCode.h"

#include <gtest/gtest.h>

#include <map>

#include "fixtures/QtPrinters.h"
#include "model/ShortcutRule.h"

namespace kestrelbay {

namespace {

const std::map<std::uint16_t, QStringView> &expectedNames() {
    static const std::map<std::uint16_t, QStringView> names{
        {0, u"A"},     {1, u"S"},     {2, u"D"},     {3, u"F"},      {4, u"H"},     {5, u"G"},
        {6, u"Z"},     {7, u"X"},     {8, u"C"},     {9, u"V"},      {11, u"B"},    {12, u"Q"},
        {13, u"W"},    {14, u"E"},    {15, u"R"},    {16, u"Y"},     {17, u"T"},    {18, u"1"},
        {19, u"2"},    {20, u"3"},    {21, u"4"},    {22, u"6"},     {23, u"5"},    {24, u"="},
        {25, u"9"},    {26, u"7"},    {27, u"-"},    {28, u"8"},     {29, u"0"},    {30, u"]"},
        {31, u"O"},    {32, u"U"},    {33, u"["},    {34, u"I"},     {35, u"P"},    {37, u"L"},
        {38, u"J"},    {39, u"'"},    {40, u"K"},    {41, u";"},     {42, u"\\"},   {43, u","},
        {44, u"/"},    {45, u"N"},    {46, u"M"},    {47, u"."},     {48, u"⇥"},    {49, u"Space"},
        {50, u"`"},    {51, u"⌫"},    {53, u"⎋"},    {65, u"."},     {67, u"*"},    {69, u"+"},
        {71, u"⌧"},    {75, u"/"},    {76, u"↩"},    {78, u"-"},     {81, u"="},    {82, u"0"},
        {83, u"1"},    {84, u"2"},    {85, u"3"},    {86, u"4"},     {87, u"5"},    {88, u"6"},
        {89, u"7"},    {91, u"8"},    {92, u"9"},    {96, u"F5"},    {97, u"F6"},   {98, u"F7"},
        {99, u"F3"},   {100, u"F8"},  {101, u"F9"},  {103, u"F11"},  {105, u"F13"}, {107, u"F14"},
        {109, u"F10"}, {111, u"F12"}, {113, u"F15"}, {114, u"Help"}, {115, u"↖"},   {116, u"⇞"},
        {117, u"⌦"},   {118, u"F4"},  {119, u"↘"},   {120, u"F2"},   {121, u"⇟"},   {122, u"F1"},
        {123, u"←"},   {124, u"→"},   {125, u"↓"},   {126, u"↑"},
    };
    return names;
}

TEST(KeyNames, AllNinetyFourKeysHaveTheirName) {
    ASSERT_EQ(expectedNames().size(), 94U);
    for (const auto &[code, name] : expectedNames())
        EXPECT_EQ(ShortcutRule::keyCodeString(KeyCode{code}), name) << code;
}

TEST(KeyNames, EveryOtherKeyCodeShowsItsNumber) {
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        const auto number = static_cast<std::uint16_t>(code);
        if (!expectedNames().contains(number)) {
            ASSERT_EQ(keyName(KeyCode{number}), QStringLiteral("Key(%1)").arg(code));
        }
    }
}

TEST(KeyNames, SpaceIsSpelledOut) {
    EXPECT_EQ(keyName(KeyCode{49}), QStringLiteral("Space"));
}

TEST(KeyNames, ReturnHasNoNameButNumericPadEnterHas) {
    EXPECT_EQ(keyName(KeyCode{36}), QStringLiteral("Key(36)"));
    EXPECT_EQ(keyName(KeyCode{76}), QString(QChar(0x21A9)));
}

TEST(KeyNames, UnknownKeyCode) {
    EXPECT_EQ(keyName(KeyCode{999}), QStringLiteral("Key(999)"));
}

TEST(KeyNames, SymbolsHaveTheirCodePoints) {
    const std::map<std::uint16_t, char16_t> expected{
        {48, 0x21E5},  {51, 0x232B},  {53, 0x238B},  {71, 0x2327},  {76, 0x21A9},
        {115, 0x2196}, {116, 0x21DE}, {117, 0x2326}, {119, 0x2198}, {121, 0x21DF},
        {123, 0x2190}, {124, 0x2192}, {125, 0x2193}, {126, 0x2191}};
    for (const auto &[code, symbol] : expected)
        EXPECT_EQ(keyName(KeyCode{code}), QString(QChar(symbol))) << code;
}

}  // namespace

}  // namespace kestrelbay
