#include "app/WindowRest.h"

#include <QWidget>

#include <gtest/gtest.h>

#include "fakes/FakeTimers.h"

namespace kestrelbay {

namespace {

using std::chrono_literals::operator""ms;

/// The start is over.
class WindowRestTest : public ::testing::Test {
protected:
    WindowRestTest() {
        timers_.advance(WindowRest::kDelayOfStart);
        rests_ = 0;
    }

    FakeTimers timers_;
    int rests_ = 0;
    const WindowRest rest_{timers_, [this] { ++rests_; }};
    QWidget first_;
    QWidget second_;
};

TEST(WindowRest, BeginsSoonAfterAStartWithoutAWindow) {
    FakeTimers timers;
    int rests = 0;
    const WindowRest rest(timers, [&rests] { ++rests; });
    timers.advance(WindowRest::kDelayOfStart - 1ms);
    EXPECT_EQ(rests, 0);
    timers.advance(1ms);
    EXPECT_EQ(rests, 1);
    EXPECT_EQ(timers.waitingCount(), 0U);
}

TEST_F(WindowRestTest, BeginsOnceAWhileAfterTheLastWindowWasClosed) {
    first_.show();
    second_.show();
    first_.close();
    timers_.advance(WindowRest::kDelay);
    EXPECT_EQ(rests_, 0) << "another one is in sight";
    EXPECT_EQ(timers_.waitingCount(), 0U);

    second_.close();
    timers_.advance(WindowRest::kDelay - 1ms);
    EXPECT_EQ(rests_, 0);
    timers_.advance(1ms);
    EXPECT_EQ(rests_, 1);
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(WindowRestTest, AWindowThatIsOpenedAgainPutsItOff) {
    first_.show();
    first_.close();
    timers_.advance(WindowRest::kDelay / 2);
    first_.show();
    first_.close();
    timers_.advance(WindowRest::kDelay - 1ms);
    EXPECT_EQ(rests_, 0);
    timers_.advance(1ms);
    EXPECT_EQ(rests_, 1);
}

TEST_F(WindowRestTest, TakesNoNoticeOfWhatIsHiddenInAWindow) {
    QWidget child(&first_);
    first_.show();
    child.hide();
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(WindowRestTest, NothingWaitsWhileAWindowIsInSight) {
    second_.show();
    second_.close();
    EXPECT_EQ(timers_.waitingCount(), 1U);
    first_.show();
    EXPECT_EQ(timers_.waitingCount(), 0U);
    QWidget toolTip(&first_, Qt::ToolTip);
    toolTip.show();
    toolTip.hide();
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(WindowRestTest, AMinimisedWindowIsInUse) {
    first_.show();
    second_.show();
    first_.showMinimized();
    second_.close();
    timers_.advance(WindowRest::kDelay);
    EXPECT_EQ(rests_, 0);
}

}  // namespace

}  // namespace kestrelbay
