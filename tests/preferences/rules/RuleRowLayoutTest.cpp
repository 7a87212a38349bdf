#include "preferences/rules/RuleRowLayout.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrelbay {

namespace {

constexpr QSize kRow{584, 52};

TEST(RuleRowLayout, PlacesTheLeftSide) {
    const RuleRowLayout layout =
        RuleRowLayout::in(kRow, {.nameWidth = 60, .badge = {30, 15}, .hasSign = false});
    EXPECT_EQ(layout.icon, QRect(10, 12, 28, 28));
    EXPECT_EQ(layout.name, QRect(46, 10, 60, 17));
    EXPECT_EQ(layout.badge, QRect(111, 11, 30, 15));
    EXPECT_EQ(layout.path.topLeft(), QPoint(46, 29));
    EXPECT_EQ(layout.path.height(), 13);
}

TEST(RuleRowLayout, PlacesTheRightSideFromTheEdge) {
    const RuleRowLayout layout = RuleRowLayout::in(kRow, {});
    EXPECT_EQ(layout.dragHandle, QRect(558, 15, 16, 22));
    EXPECT_EQ(layout.remove.size(), QSize(22, 22));
    EXPECT_EQ(layout.advanced.size(), QSize(22, 22));
    EXPECT_EQ(layout.toggle.size(), QSize(38, 20));
    EXPECT_TRUE(layout.badge.isEmpty());
    EXPECT_TRUE(layout.sign.isEmpty());
}

TEST(RuleRowLayout, NothingOverlapsAtAnyWidth) {
    for (int width = 480; width <= 1200; width += 8) {
        for (const bool hasSign : {false, true}) {
            const RuleRowLayout layout = RuleRowLayout::in(
                {width, 52}, {.nameWidth = 2000, .badge = {59, 15}, .hasSign = hasSign});
            std::vector<QRect> inOrder{layout.icon, layout.name, layout.badge};
            if (hasSign)
                inOrder.push_back(layout.sign);
            inOrder.insert(inOrder.end(), {layout.recorder, layout.toggle, layout.advanced,
                                           layout.remove, layout.dragHandle});
            int right = 0;
            for (const QRect &place : inOrder) {
                EXPECT_GT(place.left(), right) << width;
                right = place.right();
            }
            EXPECT_EQ(width - 1 - right, 10);
            EXPECT_LT(layout.path.right(), layout.recorder.left());
            EXPECT_LE(layout.badge.right(), layout.path.right());
        }
    }
}

}  // namespace

}  // namespace kestrelbay
