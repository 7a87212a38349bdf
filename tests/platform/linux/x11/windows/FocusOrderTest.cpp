#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/x11/windows/FocusOrder.h"

namespace kestrelbay::x11 {
namespace {

using namespace std::chrono_literals;

constexpr xcb_window_t kRoot = 1;
constexpr xcb_window_t kOtherRoot = 2;

/// Events bear the number of the last request before them.
class FocusOrderTest : public ::testing::Test {
protected:
    void give(xcb_window_t window, FocusOrder::Others others = {}) {
        EXPECT_TRUE(order_.give({window, kRoot, {}}, std::move(others),
                                [&](const WindowAddress &at) { return at.window == window; }));
        ++request_;
    }
    [[nodiscard]] static std::vector<WindowAddress> onTheWay(
        std::initializer_list<xcb_window_t> windows) {
        std::vector<WindowAddress> addresses;
        for (const xcb_window_t window : windows)
            addresses.push_back({window, kRoot, {}});
        return addresses;
    }
    void take(xcb_window_t window) {
        order_.take({window, kRoot, {}});
        ++request_;
    }
    void set(xcb_window_t root = kRoot) { order_.activeWindowSet(root, request_); }
    void read(xcb_window_t active, xcb_window_t root = kRoot) {
        order_.activeWindowRead(root, active, ++request_);
    }
    [[nodiscard]] bool isAwaited() {
        now_ += FocusOrder::kShortest;
        return order_.isAwaited();
    }
    [[nodiscard]] xcb_window_t unheard() {
        xcb_window_t repeated = XCB_NONE;
        const bool isAsked = order_.repeatUnheard([&](const WindowAddress &window) {
            repeated = window.window;
            return true;
        });
        EXPECT_EQ(isAsked, repeated != XCB_NONE);
        return repeated;
    }

    FocusOrder::Clock::time_point now_ = FocusOrder::Clock::now();
    // Where the numbers begin anew.
    std::uint32_t request_ = 0xffff'fffe;
    FocusOrder order_{[this] { return now_; }};
};

TEST_F(FocusOrderTest, AwaitsWhatWasAskedFor) {
    EXPECT_FALSE(isAwaited());
    read(10);
    give(11);
    EXPECT_TRUE(isAwaited());
    read(10);
    EXPECT_TRUE(isAwaited());
    set();
    read(11);
    EXPECT_FALSE(isAwaited());
    // Whatever comes then.
    set();
    read(10);
    EXPECT_FALSE(isAwaited());
}

TEST_F(FocusOrderTest, AwaitsThatTheFocusGoes) {
    read(10);
    take(10);
    read(10);
    EXPECT_TRUE(isAwaited());
    set();
    read(XCB_NONE);
    EXPECT_FALSE(isAwaited());
}

TEST_F(FocusOrderTest, GivesEachRequestAMomentAndNoneForever) {
    read(10);
    give(10);
    read(10);
    EXPECT_TRUE(order_.isAwaited());
    EXPECT_FALSE(isAwaited());
    give(11);
    read(10);
    now_ += FocusOrder::kLongest - 1ms;
    EXPECT_TRUE(order_.isAwaited());
    now_ += 1ms;
    EXPECT_FALSE(order_.isAwaited());
    // By a window manager that does nothing at all.
    EXPECT_TRUE(order_.mayBeUnheard());
    EXPECT_EQ(unheard(), xcb_window_t{11});
    now_ += FocusOrder::kLongestUnheard - FocusOrder::kLongest;
    EXPECT_FALSE(order_.mayBeUnheard());
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE});
}

TEST_F(FocusOrderTest, LetsTheUserGoElsewhere) {
    read(10);
    give(11);
    now_ += FocusOrder::kNobodysChoice;
    set();
    read(12);
    EXPECT_FALSE(isAwaited());
    // Even to where the focus was.
    give(11);
    now_ += FocusOrder::kNobodysChoice;
    set();
    read(12);
    EXPECT_FALSE(isAwaited());
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE});
    EXPECT_FALSE(order_.perhapsRefused());
}

TEST_F(FocusOrderTest, LetsTheApplicationTurnToItsDialog) {
    read(10);
    give(11, {.own = {11, 12}});
    set();
    read(12);
    EXPECT_FALSE(isAwaited());
    EXPECT_FALSE(order_.perhapsRefused());
}

TEST_F(FocusOrderTest, DoesNotTakeALateWindowManagerForTheUser) {
    read(10);
    give(11);
    // It is only now done with what was asked before.
    set();
    read(12);
    EXPECT_FALSE(isAwaited());
    EXPECT_TRUE(order_.mayBeUnheard());
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE}) << "it may have done as it was told before that";
    ASSERT_TRUE(order_.perhapsRefused());
    EXPECT_EQ(order_.perhapsRefused()->window, xcb_window_t{11});

    order_.noteRefusal({10, kRoot, {}});
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE}) << "that was of an earlier request";
    order_.noteRefusal({11, kRoot, {}});
    EXPECT_FALSE(order_.perhapsRefused());
    EXPECT_EQ(unheard(), xcb_window_t{11});
    set();
    read(11);
    EXPECT_FALSE(order_.mayBeUnheard());
}

TEST_F(FocusOrderTest, AWindowThatIsToGoMayHaveTheFocusSetOnceMore) {
    read(10);
    take(10);
    set();
    read(10);
    EXPECT_TRUE(isAwaited());
    set();
    read(11);
    EXPECT_FALSE(isAwaited());
}

TEST_F(FocusOrderTest, KnowsWhoHasTheFocusOnTheWay) {
    read(10);
    give(11, {.onTheWay = onTheWay({12, 11})});
    set();
    read(XCB_NONE);
    EXPECT_TRUE(isAwaited());
    read(12);
    EXPECT_TRUE(isAwaited());
    read(11);
    EXPECT_FALSE(isAwaited());
}

TEST_F(FocusOrderTest, DoesNotTakeAnOldAnswerForTheUsersChoice) {
    read(10);
    give(11);
    // The server answers, and the window manager sets the window; then the answer is looked at.
    const std::uint32_t asked = ++request_;
    set();
    order_.activeWindowRead(kRoot, 10, asked);
    EXPECT_TRUE(isAwaited());
    read(11);
    EXPECT_FALSE(isAwaited());
}

TEST_F(FocusOrderTest, EachScreenHasAnActiveWindow) {
    give(11);
    set(kOtherRoot);
    read(11, kOtherRoot);
    EXPECT_TRUE(isAwaited());
    read(10);
    EXPECT_TRUE(isAwaited());
    EXPECT_EQ(unheard(), xcb_window_t{11});
}

TEST_F(FocusOrderTest, IsUnheardUntilTheActiveWindowIsSet) {
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE});
    read(10);
    give(11);
    read(10);
    EXPECT_EQ(unheard(), xcb_window_t{11});
    // Set to what it was by somebody who was asked meanwhile: not ours to ask again.
    set();
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE});
    take(10);
    read(10);
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE});
    give(11);
    read(11);
    EXPECT_EQ(unheard(), xcb_window_t{XCB_NONE});
}

TEST_F(FocusOrderTest, KeepsThoseOnTheWayUntilSomebodyTurnsElsewhere) {
    give(11, {.onTheWay = onTheWay({12, 11})});
    EXPECT_EQ(order_.onTheWay().size(), 2U);
    set();
    read(11);
    EXPECT_EQ(order_.onTheWay().size(), 2U);
    EXPECT_TRUE(order_.mayBeUnheard());
    now_ += FocusOrder::kLongestUnheard;
    EXPECT_FALSE(order_.mayBeUnheard());

    give(11, {.onTheWay = onTheWay({12, 11})});
    set();
    read(13);
    EXPECT_TRUE(order_.onTheWay().empty());
}

TEST_F(FocusOrderTest, RepeatsWhatHasComeAbout) {
    give(11);
    set();
    read(11);
    EXPECT_TRUE(order_.repeat([](const WindowAddress &at) { return at.window == 11; }));
    take(11);
    EXPECT_FALSE(order_.repeat([](const WindowAddress &) { return true; }));
}

}  // namespace
}  // namespace kestrelbay::x11
