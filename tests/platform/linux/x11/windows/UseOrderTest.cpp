#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/x11/windows/UseOrder.h"

namespace kestrelbay::x11 {
namespace {

using ::testing::ElementsAre;
using Windows = std::vector<xcb_window_t>;

TEST(UseOrder, BeginsWithTheListButForTheActiveOne) {
    UseOrder order;
    order.update(Windows{3, 2, 1}, Windows{1});
    EXPECT_THAT(order.windows(), ElementsAre(1, 3, 2));
}

TEST(UseOrder, FollowsTheActiveWindowWhateverTheListSays) {
    UseOrder order;
    for (const xcb_window_t active : {3U, 1U, 2U, 1U, 1U})
        order.update(Windows{3, 2, 1}, Windows{active});
    EXPECT_THAT(order.windows(), ElementsAre(1, 2, 3));
    order.update(Windows{3, 2, 1}, Windows{});
    EXPECT_THAT(order.windows(), ElementsAre(1, 2, 3));
}

TEST(UseOrder, ANewWindowComesWhereTheListHasIt) {
    UseOrder order;
    order.update(Windows{3, 2, 1}, Windows{1});
    order.update(Windows{5, 3, 2, 4, 1}, Windows{1});
    EXPECT_THAT(order.windows(), ElementsAre(1, 5, 3, 2, 4));
    order.update(Windows{6, 5, 3, 2, 4, 1}, Windows{6});
    EXPECT_THAT(order.windows(), ElementsAre(6, 5, 3, 2, 4, 1));
}

TEST(UseOrder, SeveralNewOnesBelowTheActiveOneKeepTheListsOrder) {
    UseOrder order;
    order.update(Windows{2, 1}, Windows{2});
    order.update(Windows{4, 3, 2, 1}, Windows{4});
    EXPECT_THAT(order.windows(), ElementsAre(4, 3, 2, 1));
}

TEST(UseOrder, AWindowWhoseUseWasMissedComesWhereTheListHasIt) {
    UseOrder order;
    order.update(Windows{1}, Windows{1});
    order.update(Windows{2, 1}, Windows{1});
    EXPECT_THAT(order.windows(), ElementsAre(1, 2));
    order.update(Windows{3, 2, 1}, Windows{3});
    EXPECT_THAT(order.windows(), ElementsAre(3, 2, 1));
}

TEST(UseOrder, AListThatContradictsUseMovesNothing) {
    UseOrder order;
    order.update(Windows{3, 2, 1, 9}, Windows{3});
    order.update(Windows{3, 2, 1, 9}, Windows{1});
    order.update(Windows{9, 2, 3, 1}, Windows{9});
    EXPECT_THAT(order.windows(), ElementsAre(9, 1, 3, 2));
}

TEST(UseOrder, AWindowThatHasGoneIsForgotten) {
    UseOrder order;
    order.update(Windows{3, 2, 1}, Windows{1});
    order.update(Windows{3, 2}, Windows{3});
    EXPECT_THAT(order.windows(), ElementsAre(3, 2));
    // Its number is another's now.
    order.update(Windows{3, 2, 1}, Windows{3});
    EXPECT_THAT(order.windows(), ElementsAre(3, 2, 1));
    order.update(Windows{}, Windows{7});
    EXPECT_TRUE(order.windows().empty());
}

TEST(UseOrder, WhatWasAskedToBecomeActiveNeedNotBeSeen) {
    UseOrder order;
    order.update(Windows{3, 2, 1}, Windows{3});
    order.expect(Windows{1});
    EXPECT_THAT(order.windows(), ElementsAre(1, 3, 2));
    // The window manager has not come to it yet.
    order.update(Windows{3, 2, 1}, Windows{3});
    EXPECT_THAT(order.windows(), ElementsAre(1, 3, 2));
    order.expect(Windows{2});
    order.update(Windows{3, 2, 1}, Windows{2});
    EXPECT_THAT(order.windows(), ElementsAre(2, 1, 3));
}

TEST(UseOrder, OfSeveralThatWereAskedTheLastStaysInFront) {
    UseOrder::Clock::time_point now = UseOrder::Clock::now();
    UseOrder order([&] { return now; });
    order.update(Windows{4, 3, 2, 1}, Windows{4});
    order.expect(Windows{3, 2, 1});
    for (const xcb_window_t seen : {3U, 1U, 2U, 1U, 3U})
        order.update(Windows{4, 3, 2, 1}, Windows{seen});
    EXPECT_THAT(order.windows(), ElementsAre(1, 2, 3, 4));
    // If it stays that, it is the user's choice, or the window manager's.
    now += UseOrder::kSettling - std::chrono::milliseconds(1);
    order.update(Windows{4, 3, 2, 1}, Windows{3});
    EXPECT_THAT(order.windows(), ElementsAre(1, 2, 3, 4));
    now += std::chrono::milliseconds(1);
    order.update(Windows{4, 3, 2, 1}, Windows{3});
    EXPECT_THAT(order.windows(), ElementsAre(3, 1, 2, 4));
}

TEST(UseOrder, WindowsThatComeBackMayPassWhileTheNextIsAsked) {
    UseOrder order;
    order.update(Windows{4, 3, 2, 1}, Windows{4});
    order.expect(Windows{3, 2, 1});
    order.update(Windows{4, 3, 2, 1}, Windows{1});
    order.expect(Windows{3});
    for (const xcb_window_t seen : {2U, 1U, 3U})
        order.update(Windows{4, 3, 2, 1}, Windows{seen});
    EXPECT_THAT(order.windows(), ElementsAre(3, 1, 2, 4));
}

TEST(UseOrder, TheNextThatIsAskedCountsWhileTheLastIsActive) {
    UseOrder order;
    order.update(Windows{3, 2, 1}, Windows{3});
    for (const xcb_window_t asked : {2U, 1U}) {
        order.expect(Windows{asked});
        order.update(Windows{3, 2, 1}, Windows{asked + 1});
        EXPECT_EQ(order.windows().front(), asked);
        order.update(Windows{3, 2, 1}, Windows{asked});
        EXPECT_EQ(order.windows().front(), asked);
    }
}

TEST(UseOrder, AUserWhoGoesElsewhereIsFollowedAtOnce) {
    UseOrder order;
    order.update(Windows{4, 3, 2, 1}, Windows{4});
    order.expect(Windows{2, 1});
    order.update(Windows{4, 3, 2, 1}, Windows{3});
    order.update(Windows{4, 3, 2, 1}, Windows{2});
    EXPECT_THAT(order.windows(), ElementsAre(2, 3, 1, 4));
}

TEST(UseOrder, AnotherThanTheOneAskedIsTheUsersChoice) {
    UseOrder order;
    order.update(Windows{3, 2, 1}, Windows{3});
    order.expect(Windows{1});
    order.update(Windows{3, 2, 1}, Windows{2});
    EXPECT_THAT(order.windows(), ElementsAre(2, 1, 3));
    order.update(Windows{3, 2, 1}, Windows{1});
    EXPECT_THAT(order.windows(), ElementsAre(1, 2, 3));
}

TEST(UseOrder, ADialogBringsTheWindowsItBelongsTo) {
    UseOrder order;
    order.update(Windows{4, 3, 2, 1}, Windows{4});
    order.update(Windows{4, 3, 2, 1}, Windows{2, 1});
    EXPECT_THAT(order.windows(), ElementsAre(2, 1, 4, 3));
}

}  // namespace
}  // namespace kestrelbay::x11
