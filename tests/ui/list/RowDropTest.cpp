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

// Five rows, each with 26 px of space above and 26 below its middle of 28.
constexpr RowGeometry kRows{.rowHeight = 52, .spacing = 4, .count = 5};
constexpr int kPitch = 56;

DropProposal above(int row) {
    return {.operation = DropOperation::Above, .row = row};
}
DropProposal on(int row) {
    return {.operation = DropOperation::On, .row = row};
}

TEST(RowDropTest, proposesTheGapNearWhichTheDragIs) {
    EXPECT_EQ(proposedDrop(kRows, 0), above(0));
    EXPECT_EQ(proposedDrop(kRows, 13), above(0));
    EXPECT_EQ(proposedDrop(kRows, 14), on(0));
    EXPECT_EQ(proposedDrop(kRows, 41), on(0));
    EXPECT_EQ(proposedDrop(kRows, 42), above(1));
    EXPECT_EQ(proposedDrop(kRows, kPitch), above(1));
    EXPECT_EQ(proposedDrop(kRows, 3 * kPitch + 28), on(3));
    EXPECT_EQ(proposedDrop(kRows, 5 * kPitch - 1), above(5));
}

TEST(RowDropTest, proposesTheOuterGapsBesideTheRows) {
    EXPECT_EQ(proposedDrop(kRows, -1), above(0));
    EXPECT_EQ(proposedDrop(kRows, 5 * kPitch), above(5));
    EXPECT_EQ(proposedDrop(kRows, 10'000), above(5));
    EXPECT_EQ(proposedDrop({.rowHeight = 52, .spacing = 4, .count = 0}, 30), above(0));
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

TEST(RowGeometryTest, givesEachRowHalfOfTheSpacesBesideIt) {
    EXPECT_EQ(kRows.contentHeight(), 5 * kPitch);
    EXPECT_EQ(kRows.top(0), 2);
    EXPECT_EQ(kRows.top(4), 4 * kPitch + 2);
    EXPECT_EQ(kRows.rowAt(0), 0);
    EXPECT_EQ(kRows.rowAt(kPitch - 1), 0);
    EXPECT_EQ(kRows.rowAt(kPitch), 1);
    EXPECT_EQ(kRows.rowAt(-1), std::nullopt);
    EXPECT_EQ(kRows.rowAt(5 * kPitch), std::nullopt);
}

TEST(RowGeometryTest, knowsTheRowsOfAView) {
    using Range = RowGeometry::Range;
    EXPECT_EQ(kRows.rowsBetween(0, 1), (Range{0, 1}));
    EXPECT_EQ(kRows.rowsBetween(0, 2 * kPitch), (Range{0, 2}));
    EXPECT_EQ(kRows.rowsBetween(kPitch - 1, 2 * kPitch + 1), (Range{0, 3}));
    EXPECT_EQ(kRows.rowsBetween(0, 10'000), (Range{0, 5}));
    EXPECT_EQ(kRows.rowsBetween(1'000, 2'000), (Range{5, 5}));
}

TEST(RowGeometryTest, scrollsAsLittleAsShowsTheRow) {
    constexpr int kView = 2 * kPitch;
    EXPECT_EQ(kRows.offsetShowing(1, 0, kView), 0);
    EXPECT_EQ(kRows.offsetShowing(2, 0, kView), kPitch);
    EXPECT_EQ(kRows.offsetShowing(0, 70, kView), 0);
    EXPECT_EQ(kRows.offsetShowing(3, 10, kPitch / 2), 3 * kPitch);
}

TEST(RowGeometryTest, movesByAtLeastOneRowAPage) {
    EXPECT_EQ(kRows.rowsOfPage(400), 6);
    EXPECT_EQ(kRows.rowsOfPage(kPitch), 1);
    EXPECT_EQ(kRows.rowsOfPage(10), 1);
}

}  // namespace
}  // namespace kestrelbay
