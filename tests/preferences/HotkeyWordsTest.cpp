#include "preferences/RuleRowTexts.h"

#include <gtest/gtest.h>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/Language.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QString words(std::uint16_t keyCode, std::uint64_t flags) {
    return hotkeyInWords(KeyCode{keyCode}, ModifierFlags(flags));
}

TEST(HotkeyWords, NamesSidesAndKeys) {
    EXPECT_EQ(words(17, 0x100008), u"left Command, T"_s);
    EXPECT_EQ(words(17, 0x100000), u"Command, T"_s);
    EXPECT_EQ(words(49, 0x120000 | 0x8 | 0x4), u"right Shift, left Command, Space"_s);
    EXPECT_EQ(words(123, 0xC0000 | 0x1 | 0x40), u"left Control, right Option, Left Arrow"_s);
}

TEST(HotkeyWords, BothSidesAreNone) {
    EXPECT_EQ(words(17, 0x100018), u"Command, T"_s);
}

TEST(HotkeyWords, SpeaksSignsThatScreenReadersSkip) {
    EXPECT_EQ(words(43, 0x100008), u"left Command, Comma"_s);
    EXPECT_EQ(words(51, 0x100008), u"left Command, Backspace"_s);
    EXPECT_EQ(words(36, 0x100008), u"left Command, Return"_s);
}

TEST(HotkeyWords, TellsTheKeypadFromTheMainKeys) {
    EXPECT_EQ(words(18, 0x100000), u"Command, 1"_s);
    EXPECT_EQ(words(83, 0x100000), u"Command, keypad 1"_s);
    EXPECT_EQ(words(76, 0x100000), u"Command, keypad Enter"_s);
}

TEST(HotkeyWords, NamesTheKeyThatIsNotShown) {
    EXPECT_EQ(words(0, 0x100008), u"left Command, A"_s);
}

TEST(HotkeyWords, SaysThatThereIsNone) {
    EXPECT_EQ(words(0, 0), u"none"_s);
    EXPECT_EQ(modifiersInWords({}), QString());
}

TEST(HotkeyWords, AreChineseToo) {
    FakeUserDefaults defaults;
    defaults.setString(u"appLanguage"_s, u"zh"_s);
    Language::setDefaults(&defaults);
    EXPECT_EQ(words(49, 0x100008), u"左 Command，空格"_s);
    EXPECT_EQ(words(83, 0x100010), u"右 Command，小键盘 1"_s);
    EXPECT_EQ(words(0, 0), u"无"_s);
    Language::setDefaults(nullptr);
}

}  // namespace

}  // namespace kestrelbay
