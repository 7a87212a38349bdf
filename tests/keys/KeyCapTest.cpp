#include "keys/KeyCap.h"

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

TEST(KeyCap, IsTheCapitalOfALetter) {
    EXPECT_EQ(keyCap(u"t"_s, u"T"_s), u"T"_s);
    EXPECT_EQ(keyCap(u"е"_s, u"Е"_s), u"Е"_s);
    EXPECT_EQ(keyCap(u"i"_s, u"İ"_s), u"İ"_s);
}

TEST(KeyCap, IsTheLetterWhereShiftTypesSomethingElse) {
    EXPECT_EQ(keyCap(u"ß"_s, u"?"_s), u"ß"_s);
    EXPECT_EQ(keyCap(u"ù"_s, u"%"_s), u"ù"_s);
}

TEST(KeyCap, IsADigitEvenWhereItTakesShift) {
    EXPECT_EQ(keyCap(u"1"_s, u"!"_s), u"1"_s);
    EXPECT_EQ(keyCap(u"&"_s, u"1"_s), u"1"_s);
    EXPECT_EQ(keyCap(u"é"_s, u"2"_s), u"2"_s);
}

TEST(KeyCap, IsTheFirstOfTwoSigns) {
    EXPECT_EQ(keyCap(u","_s, u"<"_s), u","_s);
    EXPECT_EQ(keyCap(u"ا"_s, u"أ"_s), u"ا"_s);
}

TEST(KeyCap, IsNoneOfAKeyThatTypesNothingVisible) {
    for (const QString &text : {QString(), u" "_s, u"\r"_s, u"\x7f"_s, u"\x1b"_s, u"ab"_s})
        EXPECT_EQ(keyCap(text, text), QString()) << text.toStdString();
}

}  // namespace
}  // namespace kestrelbay
