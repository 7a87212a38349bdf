#include "ui/list/RowDrop.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPitch = 56;

/// In a list of five rows.
std::optional<int> gapOfFive(int y) {
    return gapAt(y, kPitch, 5);
}

TEST(RowDropTest, takesTheGapNearWhichTheDragIs) {
    EXPECT_EQ(gapOfFive(0), 0);
    EXPECT_EQ(gapOfFive(13), 0);
    EXPECT_EQ(gapOfFive(14), std::nullopt);
    EXPECT_EQ(gapOfFive(41), std::nullopt);
    EXPECT_EQ(gapOfFive(42), 1);
    EXPECT_EQ(gapOfFive(kPitch), 1);
    EXPECT_EQ(gapOfFive(3 * kPitch + 28), std::nullopt);
    EXPECT_EQ(gapOfFive(5 * kPitch - 1), 5);
}

TEST(RowDropTest, takesTheOuterGapsBesideTheRows) {
    EXPECT_EQ(gapOfFive(-1), 0);
    EXPECT_EQ(gapOfFive(5 * kPitch), 5);
    EXPECT_EQ(gapOfFive(10'000), 5);
    EXPECT_EQ(gapAt(30, kPitch, 0), 0);
}

TEST(RowDropTest, writesTheRowAsADecimalNumber) {
    EXPECT_EQ(textOfDraggedRow(3), u"3"_s);
    EXPECT_EQ(draggedRow(textOfDraggedRow(1'234)), 1'234);
}

TEST(RowDropTest, readsDecimalNumbersOnly) {
    constexpr auto kLargest = std::numeric_limits<std::ptrdiff_t>::max();
    const std::vector<std::pair<QString, std::optional<std::ptrdiff_t>>> table{
        {u"3"_s, 3},
        {u"0"_s, 0},
        {u"+3"_s, 3},
        {u"-3"_s, -3},
        {u"-0"_s, 0},
        {u"007"_s, 7},
        {u"9223372036854775807"_s, kLargest},
        {u"9223372036854775808"_s, std::nullopt},
        {{}, std::nullopt},
        {u" "_s, std::nullopt},
        {u" 3"_s, std::nullopt},
        {u"3 "_s, std::nullopt},
        {u"3\n"_s, std::nullopt},
        {u"+"_s, std::nullopt},
        {u"-"_s, std::nullopt},
        {u"+-3"_s, std::nullopt},
        {u"-+3"_s, std::nullopt},
        {u"++3"_s, std::nullopt},
        {u"3.0"_s, std::nullopt},
        {u"1e2"_s, std::nullopt},
        {u"0x3"_s, std::nullopt},
        {u"1,000"_s, std::nullopt},
        {u"three"_s, std::nullopt},
        {u"\u0663"_s, std::nullopt},
        {u"\uff13"_s, std::nullopt},
    };
    for (const auto &[text, row] : table)
        EXPECT_EQ(draggedRow(text), row) << text.toStdString();
}

TEST(RowDropTest, countsTheDestinationWithoutTheMovedRow) {
    struct Case {
        std::ptrdiff_t source, gap, destination;
    };
    const std::vector<Case> table{
        {1, 4, 3}, {3, 0, 0}, {2, 3, 2}, {2, 2, 2}, {4, 5, 4}, {0, 5, 4}, {0, 0, 0}, {4, 0, 0},
    };
    for (const auto &[source, gap, destination] : table)
        EXPECT_EQ(dropDestination(source, gap), destination) << source << " above " << gap;
}

TEST(RowDropTest, scrollsNearTheEdgesOnly) {
    EXPECT_EQ(autoscrollStep(200, 400), 0);
    EXPECT_EQ(autoscrollStep(32, 400), 0);
    EXPECT_EQ(autoscrollStep(367, 400), 0);
    EXPECT_LT(autoscrollStep(31, 400), 0);
    EXPECT_GT(autoscrollStep(368, 400), 0);
    EXPECT_EQ(autoscrollStep(0, 400), -autoscrollStep(399, 400));
}

TEST(RowDropTest, scrollsFasterTheNearerTheEdge) {
    for (int y = 1; y < 32; ++y)
        EXPECT_GE(autoscrollStep(y, 400), autoscrollStep(y - 1, 400)) << y;
    EXPECT_LT(autoscrollStep(0, 400), autoscrollStep(31, 400));
    EXPECT_EQ(autoscrollStep(-20, 400), autoscrollStep(0, 400));
}

TEST(RowDropTest, scrollsToTheNearerEdgeOfALowList) {
    EXPECT_LT(autoscrollStep(10, 40), 0);
    EXPECT_GT(autoscrollStep(30, 40), 0);
}

}  // namespace
}  // namespace kestrelbay
