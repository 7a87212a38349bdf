#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <optional>
#include <thread>
#include <vector>

#include <QCoreApplication>
#include <QEventLoop>

#include "tasks/DispatchQueue.h"
#include "tasks/Timers.h"

using namespace std::chrono_literals;

namespace kestrelbay {

namespace {

/// Far beyond what any machine needs: only a failing test waits that long.
constexpr auto kLongTime = 30s;

TEST(MainQueue, WorkWaitsForTheEventLoop) {
    MainQueue queue;
    bool ran = false;
    queue.async([&] { ran = true; });
    EXPECT_FALSE(ran);
    QCoreApplication::processEvents();
    EXPECT_TRUE(ran);
}

TEST(MainQueue, WorkRunsInTheOrderItWasHandedIn) {
    MainQueue queue;
    std::vector<int> order;
    for (int i = 0; i < 5; ++i)
        queue.async([&order, i] { order.push_back(i); });
    QCoreApplication::processEvents();
    EXPECT_EQ(order, (std::vector{0, 1, 2, 3, 4}));
}

TEST(MainQueue, WorkOfOtherThreadsRunsOnTheMainThread) {
    MainQueue queue;
    QEventLoop loop;
    std::thread::id ranOn;
    std::thread other([&] {
        queue.async([&] {
            ranOn = std::this_thread::get_id();
            loop.quit();
        });
    });
    loop.exec();
    other.join();
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(MainQueue, WorkThatStillWaitsAtItsEndNeverRuns) {
    bool ran = false;
    std::optional<MainQueue> queue(std::in_place);
    queue->async([&] { ran = true; });
    queue.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
}

TEST(ThreadPoolQueue, WorkRunsOnAnotherThread) {
    ThreadPoolQueue queue;
    std::promise<std::thread::id> ranOn;
    queue.async([&] { ranOn.set_value(std::this_thread::get_id()); });
    auto future = ranOn.get_future();
    ASSERT_EQ(future.wait_for(kLongTime), std::future_status::ready);
    EXPECT_NE(future.get(), std::this_thread::get_id());
}

TEST(ThreadPoolQueue, ThreadsAreReadiedBeforeTheirWork) {
    thread_local bool isReady = false;
    ThreadPoolQueue queue([] { isReady = true; });
    std::promise<bool> wasReady;
    queue.async([&] { wasReady.set_value(isReady); });
    auto future = wasReady.get_future();
    ASSERT_EQ(future.wait_for(kLongTime), std::future_status::ready);
    EXPECT_TRUE(future.get());
    EXPECT_FALSE(isReady);
}

TEST(ThreadPoolQueue, ThreadsAreKeptUntilTheyAreToEnd) {
    static std::atomic<int> ended = 0;
    struct OfThread {
        ~OfThread() { ++ended; }
    };
    ThreadPoolQueue queue;
    const auto work = [&queue] {
        std::promise<void> done;
        queue.async([&] {
            const thread_local OfThread ofThread;
            done.set_value();
        });
        ASSERT_EQ(done.get_future().wait_for(kLongTime), std::future_status::ready);
    };
    work();
    work();
    EXPECT_EQ(ended, 0);
    // A thread is idle a moment after its work has ended.
    while (ended == 0)
        queue.endIdleThreads();
    work();
}

TEST(ThreadPoolQueue, AThreadAtWorkDoesNotEnd) {
    ThreadPoolQueue queue;
    std::promise<void> release;
    std::promise<void> done;
    queue.async([&, released = release.get_future().share()] {
        released.wait();
        done.set_value();
    });
    queue.endIdleThreads();
    release.set_value();
    EXPECT_EQ(done.get_future().wait_for(kLongTime), std::future_status::ready);
}

TEST(ThreadPoolQueue, NoWorkWaitsBehindWorkThatHangs) {
    constexpr int kHanging = 50;
    std::promise<void> release;
    const std::shared_future<void> released = release.get_future().share();
    {
        ThreadPoolQueue queue({}, kLongTime);
        for (int i = 0; i < kHanging; ++i)
            queue.async([released] { released.wait(); });
        std::promise<void> done;
        queue.async([&] { done.set_value(); });
        EXPECT_EQ(done.get_future().wait_for(kLongTime), std::future_status::ready);
        release.set_value();
    }
}

TEST(ThreadPoolQueue, EndWaitsForWorkThatComesToAnEnd) {
    std::atomic<bool> done = false;
    std::promise<void> started;
    {
        ThreadPoolQueue queue({}, kLongTime);
        queue.async([&] {
            started.set_value();
            std::this_thread::yield();
            done = true;
        });
        started.get_future().wait();
    }
    EXPECT_TRUE(done);
}

TEST(ThreadPoolQueue, EndDoesNotWaitForWorkThatHangs) {
    auto release = std::make_shared<std::promise<void>>();
    auto finished = std::make_shared<std::promise<void>>();
    auto future = finished->get_future();
    {
        ThreadPoolQueue queue({}, 1ms);
        queue.async([released = release->get_future().share(), finished] {
            released.wait();
            finished->set_value();
        });
    }
    release->set_value();
    EXPECT_EQ(future.wait_for(kLongTime), std::future_status::ready);
}

TEST(SteadyClock, NeverGoesBack) {
    const SteadyClock clock;
    const Clock::TimePoint before = clock.now();
    EXPECT_LE(before, clock.now());
}

}  // namespace

}  // namespace kestrelbay
