#include "ui/look/WrappedText.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "fixtures/QtPrinters.h"
#include "ui/look/Fonts.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr int kWidth = 300;
constexpr QChar kEllipsis(0x2026);

QFont font() {
    return systemFont(13);
}
int heightOf(const QString &text) {
    return wrappedTextHeight(text, font(), kWidth);
}
int widthOf(const QString &line) {
    return QFontMetrics(font()).horizontalAdvance(line);
}
QStringList linesOf(const QString &text) {
    return inTwoLines(text, font(), kWidth).split(u'\n');
}

TEST(WrappedTextTest, HeightGrowsWithTheLines) {
    const int line = heightOf(u"One"_s);
    EXPECT_GE(line, 13);
    EXPECT_NEAR(heightOf(u"One\ntwo"_s), 2 * line, 1);
    EXPECT_NEAR(heightOf(u"1\n2\n3\n4\n5"_s), 5 * line, 3);
    EXPECT_NEAR(heightOf(QString(100, u'字')), heightOf(QString(100, u'字').left(1)) * 5, 12);
}

TEST(WrappedTextTest, WhatFitsIsLeftAlone) {
    EXPECT_EQ(linesOf(u"Short notice"_s), QStringList{u"Short notice"_s});
    EXPECT_EQ(linesOf(u"One\ntwo"_s), (QStringList{u"One"_s, u"two"_s}));
}

TEST(WrappedTextTest, BreaksBetweenWords) {
    const QString text = u"Hotkey conflict: already used by another rule, please re-enter"_s;
    const QStringList lines = linesOf(text);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.join(u' '), text);
}

TEST(WrappedTextTest, BreaksChineseBetweenCharacters) {
    const QString text = u"点击状态栏的图标进行快捷键配置点击状态栏的图标进行快捷键配置"_s;
    const QStringList lines = linesOf(text);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.join(QString()), text);
    EXPECT_LE(widthOf(lines.first()), kWidth);
}

TEST(WrappedTextTest, NoLastWordStandsAlone) {
    const QString english =
        u"(Tip: Advanced settings say why hotkeys do not work and what to do about it)"_s;
    for (const QString &text : {english, QString(25, u'字') + u"。"_s}) {
        for (int width = widthOf(text) - 1; width > widthOf(text) * 2 / 3; width -= 7) {
            const QStringList lines = balancedLines(text, font(), width).split(u'\n');
            ASSERT_EQ(lines.size(), 2);
            EXPECT_EQ(lines.join(text == english ? u" "_s : QString()), text);
            EXPECT_LE(std::abs(widthOf(lines[0]) - widthOf(lines[1])), widthOf(u"settings  "_s));
            EXPECT_EQ(inTwoLines(text, font(), width).split(u'\n'), lines);
        }
    }
}

TEST(WrappedTextTest, BalancedLinesAreNoMoreThanNeeded) {
    const QString words = u"lorem ipsum dolor sit amet "_s.repeated(6).trimmed();
    const QStringList lines = balancedLines(words, font(), kWidth).split(u'\n');
    EXPECT_NEAR(heightOf(words) / double(heightOf(u"1"_s)), double(lines.size()), 0.2);
    for (const QString &line : lines)
        EXPECT_LE(widthOf(line), kWidth);
    EXPECT_EQ(balancedLines(u"One\n\ntwo"_s, font(), kWidth), u"One\n\ntwo"_s);
    EXPECT_EQ(balancedLines(QString(), font(), kWidth), QString());
}

TEST(WrappedTextTest, EachOwnLineIsBalancedByItself) {
    const QString broken = u"Hotkey conflict: already used by another rule, please re-enter"_s;
    const QString balanced = balancedLines(broken, font(), kWidth);
    EXPECT_EQ(balancedLines(broken + u"\nShort"_s, font(), kWidth), balanced + u"\nShort"_s);
}

TEST(WrappedTextTest, BreaksAWordThatIsTooLong) {
    const QString text(60, u'w');
    const QStringList lines = linesOf(text);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_LE(QFontMetrics(font()).horizontalAdvance(lines.first()), kWidth);
}

TEST(WrappedTextTest, WhatGoesBeyondTwoLinesIsCut) {
    for (const QString &text : {u"lorem ipsum "_s.repeated(20), QString(200, u'字')}) {
        const QStringList lines = linesOf(text);
        ASSERT_EQ(lines.size(), 2);
        EXPECT_TRUE(lines.last().endsWith(kEllipsis)) << lines.last().toStdString();
        EXPECT_LE(QFontMetrics(font()).horizontalAdvance(lines.last()), kWidth);
    }
}

TEST(WrappedTextTest, LinesBelowTheSecondAreCut) {
    EXPECT_EQ(linesOf(u"1\n2\n3\n4\n5"_s), (QStringList{u"1"_s, u"2"_s + kEllipsis}));
}

TEST(WrappedTextTest, NoTextIsOneEmptyLine) {
    EXPECT_EQ(linesOf(QString()), QStringList{QString()});
    EXPECT_EQ(heightOf(QString()), heightOf(u"One"_s));
}

}  // namespace

}  // namespace kestrelbay
