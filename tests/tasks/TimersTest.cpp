#include "tasks/Timers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include "support/Poll.h"

using namespace std::chrono_literals;

namespace kestrelbay {

namespace {

/// Returns when another timer of a millisecond has fired five times, by when any other that
/// was due has.
void waitForTimers(QtTimers &timers) {
    int ticks = 0;
    const auto timer = timers.every(1ms, [&ticks] { ++ticks; });
    EXPECT_TRUE(testing::waitUntil([&] { return ticks >= 5; }));
}

TEST(QtTimers, OneThatIsOnceFiresOnce) {
    QtTimers timers;
    int fired = 0;
    const auto timer = timers.once(1ms, [&fired] { ++fired; });
    ASSERT_TRUE(testing::waitUntil([&] { return fired > 0; }));
    waitForTimers(timers);
    EXPECT_EQ(fired, 1);
}

TEST(QtTimers, OneThatRepeatsGoesOnUntilItIsDestroyed) {
    QtTimers timers;
    int fired = 0;
    auto timer = timers.every(1ms, [&fired] { ++fired; });
    ASSERT_TRUE(testing::waitUntil([&] { return fired >= 3; }));
    timer.reset();
    const int before = fired;
    waitForTimers(timers);
    EXPECT_EQ(fired, before);
}

TEST(QtTimers, WorkMayDestroyItsTimer) {
    QtTimers timers;
    const auto said = std::make_shared<int>(0);
    std::unique_ptr<Timers::Timer> timer;
    timer = timers.every(1ms, [&timer, said] {
        timer.reset();
        ++*said;
    });
    ASSERT_TRUE(testing::waitUntil([&] { return *said == 1; }));
    waitForTimers(timers);
    EXPECT_EQ(*said, 1);
    EXPECT_EQ(said.use_count(), 1);
}

// The event loop may have ended for good.
TEST(QtTimers, WhatIsDestroyedIsGoneWithoutAnEventLoop) {
    QtTimers timers;
    const auto kept = std::make_shared<int>(0);
    auto timer = timers.once(1h, [kept] {});
    timer.reset();
    EXPECT_EQ(kept.use_count(), 1);
}

}  // namespace

}  // namespace kestrelbay
