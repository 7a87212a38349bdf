#include "preferences/RuleRowTexts.h"

#include <gtest/gtest.h>

#include "fakes/FakeKeyboardLayout.h"
#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/Language.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QString words(std::uint16_t keyCode, std::uint64_t flags, const FakeKeyboardLayout &layout = {}) {
    return hotkeyInWords(KeyCode{keyCode}, ModifierFlags(flags), layout);
}

TEST(HotkeyWords, NamesSidesAndKeys) {
    EXPECT_EQ(words(17, 0x100008), u"left Super, T"_s);
    EXPECT_EQ(words(17, 0x100000), u"Super, T"_s);
    EXPECT_EQ(words(49, 0x120000 | 0x8 | 0x4), u"right Shift, left Super, Space"_s);
    EXPECT_EQ(words(123, 0xC0000 | 0x1 | 0x40), u"left Control, right Alt, Left Arrow"_s);
}

TEST(HotkeyWords, BothSidesAreNone) {
    EXPECT_EQ(words(17, 0x100018), u"Super, T"_s);
}

TEST(HotkeyWords, SpeaksSignsThatScreenReadersSkip) {
    EXPECT_EQ(words(43, 0x100008), u"left Super, Comma"_s);
    EXPECT_EQ(words(51, 0x100008), u"left Super, Backspace"_s);
    EXPECT_EQ(words(36, 0x100008), u"left Super, Return"_s);
}

TEST(HotkeyWords, TellsTheKeypadFromTheMainKeys) {
    EXPECT_EQ(words(18, 0x100000), u"Super, 1"_s);
    EXPECT_EQ(words(83, 0x100000), u"Super, keypad 1"_s);
    EXPECT_EQ(words(76, 0x100000), u"Super, keypad Enter"_s);
}

TEST(HotkeyWords, NamesKeysAsTheKeyboardsOfThisSystemDo) {
    EXPECT_EQ(words(117, 0x80020), u"left Alt, Delete"_s);
    EXPECT_EQ(words(71, 0x100008), u"left Super, Num Lock"_s);
    EXPECT_EQ(words(114, 0x100008), u"left Super, Insert"_s);
}

TEST(HotkeyWords, NamesWhatTheLayoutPrintsOnTheKey) {
    FakeKeyboardLayout layout;
    layout.print(
        {{key::kA, u"Q"_s}, {KeyCode{17}, u"Е"_s}, {KeyCode{33}, u"^"_s}, {KeyCode{83}, u"!"_s}});
    EXPECT_EQ(words(0, 0x100008, layout), u"left Super, Q"_s);
    EXPECT_EQ(words(17, 0x100008, layout), u"left Super, Е"_s);
    EXPECT_EQ(words(33, 0x100008, layout), u"left Super, Circumflex"_s);
    EXPECT_EQ(words(83, 0x100008, layout), u"left Super, keypad 1"_s);
    EXPECT_EQ(words(11, 0x100008, layout), u"left Super, B"_s) << "not known to the layout";
}

TEST(HotkeyWords, NamesTheKeyThatIsNotShown) {
    EXPECT_EQ(words(0, 0x100008), u"left Super, A"_s);
}

TEST(HotkeyWords, SaysThatThereIsNone) {
    EXPECT_EQ(words(0, 0), u"none"_s);
    EXPECT_EQ(modifiersInWords({}), QString());
}

TEST(HotkeyWords, AreChineseToo) {
    FakeUserDefaults defaults;
    defaults.setString(u"appLanguage"_s, u"zh"_s);
    Language::setDefaults(&defaults);
    EXPECT_EQ(words(49, 0x100008), u"左 Super，空格"_s);
    EXPECT_EQ(words(83, 0x100010), u"右 Super，小键盘 1"_s);
    EXPECT_EQ(words(0, 0), u"无"_s);
    Language::setDefaults(nullptr);
}

}  // namespace

}  // namespace kestrelbay
