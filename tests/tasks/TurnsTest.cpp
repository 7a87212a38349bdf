#include "tasks/Turns.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace kestrelbay {

namespace {

/// Far beyond what any machine needs: only a failing test waits that long.
constexpr auto kLongTime = 30s;

TEST(Turns, WorkIsDoneInTheOrderInWhichTurnsWereTaken) {
    constexpr int kTurns = 20;
    Turns turns{kLongTime};
    std::vector<std::shared_ptr<Turns::Turn>> taken;
    for (int i = 0; i < kTurns; ++i)
        taken.push_back(turns.take());

    // No lock: only if they run one after the other, nothing is lost.
    std::vector<int> order;
    std::vector<std::thread> threads;
    for (int i = kTurns - 1; i >= 0; --i)
        threads.emplace_back([&order, i, turn = taken[static_cast<std::size_t>(i)]] {
            turn->run([&] { order.push_back(i); });
        });
    for (std::thread &thread : threads)
        thread.join();

    std::vector<int> expected;
    for (int i = 0; i < kTurns; ++i)
        expected.push_back(i);
    EXPECT_EQ(order, expected);
}

TEST(Turns, NoneWaitsForLongBehindWorkThatHangs) {
    Turns turns{1ms};
    const auto hung = turns.take();
    const auto next = turns.take();
    const auto last = turns.take();
    std::string done;
    hung->run([&] {
        next->run([&] {
            last->run([&] { done += "last "; });
            done += "next ";
        });
        done += "hung";
    });
    EXPECT_EQ(done, "last next hung");
}

TEST(Turns, WorkThatHangsStillComesBeforeWhatBeginsAfterIt) {
    Turns turns{0ms};
    const auto hung = turns.take();
    const auto next = turns.take();
    // However short the patience, it is counted from the begin of the one before.
    std::string done;
    std::thread waiting([&] { next->run([&] { done += "next"; }); });
    hung->run([&] {
        done += "hung ";
        waiting.join();
    });
    EXPECT_EQ(done, "hung next");
}

TEST(Turns, ATurnThatIsGivenUpHoldsNobodyUp) {
    Turns turns{kLongTime};
    auto first = turns.take();
    const auto second = turns.take();
    first.reset();
    const auto start = std::chrono::steady_clock::now();
    second->run([] {});
    EXPECT_LT(std::chrono::steady_clock::now() - start, kLongTime);
}

TEST(Turns, ATurnIsNextWhenTheOneBeforeHasEnded) {
    Turns turns{kLongTime};
    const auto first = turns.take();
    auto second = turns.take();
    const auto third = turns.take();
    EXPECT_TRUE(first->isNext());
    EXPECT_FALSE(second->isNext());
    first->run([&] { EXPECT_FALSE(second->isNext()); });
    EXPECT_TRUE(second->isNext());
    EXPECT_FALSE(third->isNext());
    second.reset();
    EXPECT_TRUE(third->isNext());
}

TEST(Turns, WhatALaterTurnHasClaimedIsLostToEarlierOnes) {
    Turns turns{kLongTime};
    const auto first = turns.take();
    const auto second = turns.take();
    const auto third = turns.take();
    EXPECT_TRUE(first->claim());
    EXPECT_TRUE(second->claim());
    EXPECT_TRUE(second->claim());
    EXPECT_FALSE(first->claim());
    EXPECT_TRUE(third->claim());
    EXPECT_FALSE(second->claim());
}

}  // namespace

}  // namespace kestrelbay
