#include "platform/linux/x11/windows/WindowStates.h"

#include <vector>

#include <gtest/gtest.h>

namespace kestrelbay::x11 {
namespace {

constexpr xcb_window_t kOne = 11;
constexpr xcb_window_t kOther = 12;

const WindowState kMinimized{.exists = true, .managed = true, .minimized = true};

std::vector<xcb_window_t> windowsOf(const WindowStates::Asking &asking) {
    std::vector<xcb_window_t> windows;
    for (const WindowAddress &address : asking.windows)
        windows.push_back(address.window);
    return windows;
}

class WindowStatesTest : public ::testing::Test {
protected:
    WindowStates::Asking want(const std::vector<xcb_window_t> &windows) {
        std::vector<WindowAddress> addresses;
        for (const xcb_window_t window : windows)
            addresses.push_back({.window = window});
        return states_.want(addresses);
    }
    void keep(const WindowStates::Asking &asking) {
        states_.keep(asking, std::vector<WindowState>(asking.windows.size(), kMinimized));
    }
    [[nodiscard]] bool isKnown(xcb_window_t window) const { return states_.of(window).has_value(); }

    WindowStates states_;
};

TEST_F(WindowStatesTest, AreKeptUntilTheyChange) {
    keep(want({kOne, kOther}));
    ASSERT_TRUE(isKnown(kOne));
    EXPECT_TRUE(states_.of(kOne)->minimized);
    states_.windowChanged(kOne);
    EXPECT_FALSE(isKnown(kOne));
    EXPECT_TRUE(isKnown(kOther));
    states_.allChanged();
    EXPECT_FALSE(isKnown(kOther));
}

TEST_F(WindowStatesTest, OfWindowsThatNobodyAskedForAreNotAskedFor) {
    EXPECT_TRUE(states_.askUnknown().windows.empty());
    states_.windowChanged(kOne);
    EXPECT_TRUE(states_.askUnknown().windows.empty());
}

TEST_F(WindowStatesTest, ThatHaveChangedAreAskedForAgain) {
    keep(want({kOne, kOther}));
    EXPECT_TRUE(states_.askUnknown().windows.empty());
    states_.windowChanged(kOther);
    const WindowStates::Asking asking = states_.askUnknown();
    EXPECT_EQ(windowsOf(asking), std::vector{kOther});
    keep(asking);
    EXPECT_TRUE(isKnown(kOther));
}

TEST_F(WindowStatesTest, ThatChangeWhileTheyAreAskedForAreNotKept) {
    const WindowStates::Asking asking = want({kOne, kOther});
    states_.windowChanged(kOne);
    keep(asking);
    EXPECT_FALSE(isKnown(kOne));
    EXPECT_TRUE(isKnown(kOther));

    states_.allChanged();
    const WindowStates::Asking again = states_.askUnknown();
    states_.allChanged();
    keep(again);
    EXPECT_FALSE(isKnown(kOne));
}

TEST_F(WindowStatesTest, OfAnEarlierQuestionDoNotReplaceThoseOfALaterOne) {
    const WindowStates::Asking earlier = want({kOne});
    states_.windowChanged(kOne);
    const WindowStates::Asking later = want({kOne});
    keep(earlier);
    EXPECT_FALSE(isKnown(kOne));
    keep(later);
    EXPECT_TRUE(isKnown(kOne));
}

TEST_F(WindowStatesTest, OfWindowsThatAreGoneAreForgotten) {
    const WindowStates::Asking asking = want({kOne});
    states_.windowGone(kOne);
    keep(asking);
    EXPECT_FALSE(isKnown(kOne));
    EXPECT_TRUE(states_.askUnknown().windows.empty());
}

}  // namespace
}  // namespace kestrelbay::x11
