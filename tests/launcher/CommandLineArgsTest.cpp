#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "launcher/AppLauncher.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QStringList args(const QString &text) {
    return AppLauncher::parseCommandLineArgs(text);
}

TEST(CommandLineArgs, QuotedPieceJoinsTheArgumentAroundIt) {
    EXPECT_EQ(args(uR"(--user-data-dir="/tmp/a b" -v)"_s),
              (QStringList{u"--user-data-dir=/tmp/a b"_s, u"-v"_s}));
    EXPECT_EQ(args(uR"(a"b c"d)"_s), QStringList{u"ab cd"_s});
    EXPECT_EQ(args(uR"('a'"b"c)"_s), QStringList{u"abc"_s});
}

TEST(CommandLineArgs, EscapedQuoteDoesNotCloseASingleQuote) {
    EXPECT_EQ(args(uR"('it\'s' "x")"_s), (QStringList{u"it's"_s, u"x"_s}));
}

TEST(CommandLineArgs, EscapedSpaceJoins) {
    EXPECT_EQ(args(uR"(a\ b)"_s), QStringList{u"a b"_s});
}

TEST(CommandLineArgs, EmptyQuotesAddNothing) {
    EXPECT_EQ(args(uR"("")"_s), QStringList());
    EXPECT_EQ(args(uR"('')"_s), QStringList());
    EXPECT_EQ(args(uR"(--title "")"_s), QStringList{u"--title"_s});
}

TEST(CommandLineArgs, QuotedSpaceIsAnArgument) {
    EXPECT_EQ(args(uR"(" ")"_s), QStringList{u" "_s});
}

TEST(CommandLineArgs, BackslashEscapesInsideBothKindsOfQuotes) {
    EXPECT_EQ(args(uR"("a\"b" 'c\\d')"_s), (QStringList{uR"(a"b)"_s, uR"(c\d)"_s}));
}

TEST(CommandLineArgs, BackslashTakesAnyCharacterAsItIs) {
    EXPECT_EQ(args(uR"(\n\t\\)"_s), QStringList{uR"(nt\)"_s});
    EXPECT_EQ(args(uR"(\"a)"_s), QStringList{uR"("a)"_s});
}

TEST(CommandLineArgs, OtherKindOfQuoteInsideQuotesIsText) {
    EXPECT_EQ(args(uR"("it's" 'say "x"')"_s), (QStringList{u"it's"_s, uR"(say "x")"_s}));
}

TEST(CommandLineArgs, QuoteThatIsNeverClosedRunsToTheEnd) {
    EXPECT_EQ(args(uR"(a "b c)"_s), (QStringList{u"a"_s, u"b c"_s}));
    EXPECT_EQ(args(uR"(a ")"_s), QStringList{u"a"_s});
}

TEST(CommandLineArgs, BackslashAtTheEndIsDropped) {
    EXPECT_EQ(args(uR"(a\)"_s), QStringList{u"a"_s});
    EXPECT_EQ(args(uR"(\)"_s), QStringList());
}

TEST(CommandLineArgs, RunsOfWhiteSpaceGiveNoEmptyArguments) {
    EXPECT_EQ(args(u"  a \t\n b  "_s), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(args(QString()), QStringList());
    EXPECT_EQ(args(u" \t"_s), QStringList());
}

TEST(CommandLineArgs, EveryUnicodeWhiteSpaceSeparates) {
    const QString spaces =
        u"\t\n\u000B\u000C\r \u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F"
        u"\u205F\u3000"_s;
    for (const QChar space : spaces)
        EXPECT_EQ(args(u"a"_s + space + u"b"_s), (QStringList{u"a"_s, u"b"_s}))
            << unsigned{space.unicode()};
}

TEST(CommandLineArgs, ZeroWidthSpaceDoesNotSeparate) {
    EXPECT_EQ(args(u"a\u200Bb"_s), QStringList{u"a\u200Bb"_s});
}

TEST(CommandLineArgs, LineBreakOfTwoCharactersSeparates) {
    EXPECT_EQ(args(u"a\r\nb"_s), (QStringList{u"a"_s, u"b"_s}));
}

TEST(CommandLineArgs, BackslashTakesAWholeLineBreak) {
    EXPECT_EQ(args(u"a\\\r\nb"_s), QStringList{u"a\r\nb"_s});
}

TEST(CommandLineArgs, SpaceWithACombiningMarkIsACharacterOfItsOwn) {
    EXPECT_EQ(args(u"a \u0301b"_s), QStringList{u"a \u0301b"_s});
}

TEST(CommandLineArgs, QuoteWithACombiningMarkIsNoQuote) {
    EXPECT_EQ(args(u"\"\u0301a b"_s), (QStringList{u"\"\u0301a"_s, u"b"_s}));
}

TEST(CommandLineArgs, CharactersBeyondTheFirstPlaneAreKept) {
    EXPECT_EQ(args(u"\\😀 👨‍👩‍👧"_s), (QStringList{u"😀"_s, u"👨‍👩‍👧"_s}));
}

TEST(CommandLineArgs, LoneSurrogatesAreKept) {
    const QString text = u"a"_s + QChar(0xD800) + u" "_s + QChar(0xDC00);
    EXPECT_EQ(args(text), text.split(u' '));
}

}  // namespace

}  // namespace kestrelbay
