#include "platform/linux/wayland/toplevels/EventPause.h"

#include <gtest/gtest.h>

namespace kestrelbay::wayland {
namespace {

using namespace std::chrono_literals;

class EventPauseTest : public ::testing::Test {
protected:
    /// As long as the last pause, so many events a second have come.
    std::chrono::milliseconds nextAt(double rate) {
        now_ += last_;
        const double seconds = std::chrono::duration<double>(last_).count();
        return last_ = pause_.after(static_cast<std::size_t>(rate * seconds), now_);
    }
    /// None has come for so long, and now one.
    std::chrono::milliseconds nextAfterQuiet(std::chrono::milliseconds time) {
        now_ += time;
        return last_ = pause_.after(1, now_);
    }

    EventPause pause_;
    EventPause::Clock::time_point now_{1h};
    std::chrono::milliseconds last_ = pause_.after(1, now_);
};

TEST_F(EventPauseTest, BeginsWithTheFirst) {
    EXPECT_EQ(last_, EventPause::kFirst);
}

TEST_F(EventPauseTest, IsAsLongAsWhatComesFitsIntoTheSocket) {
    // A title that changes each second.
    for (int i = 0; i < 10; ++i)
        nextAt(1);
    EXPECT_EQ(last_, 64s);
    // One that does ten times a second.
    for (int i = 0; i < 10; ++i)
        nextAt(10);
    EXPECT_NEAR(static_cast<double>(last_.count()), 6400, 100);
}

TEST_F(EventPauseTest, GrowsNoFasterThanTwofoldAndNotForEver) {
    EXPECT_EQ(nextAt(0), 4s);
    EXPECT_EQ(nextAt(0), 8s);
    for (int i = 0; i < 10; ++i)
        nextAt(0.01);
    EXPECT_EQ(last_, EventPause::kLongest);
}

TEST_F(EventPauseTest, ShrinksAtOnce) {
    EXPECT_EQ(nextAt(320), 200ms);
    EXPECT_EQ(nextAt(1'000'000), EventPause::kShortest);
}

TEST_F(EventPauseTest, BeginsAnewWhenNothingCameForLong) {
    nextAt(0);
    nextAt(0);
    EXPECT_EQ(nextAfterQuiet(1min), EventPause::kFirst);
}

}  // namespace
}  // namespace kestrelbay::wayland
