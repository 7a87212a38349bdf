#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "tasks/Timers.h"

namespace kestrelbay {

/// Timers of a time that only a test moves.
class FakeTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> once(std::chrono::milliseconds delay,
                                              std::function<void()> work) override {
        return start(delay, {}, std::move(work));
    }
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                               std::function<void()> work) override {
        return start(interval, interval, std::move(work));
    }

    // For the test:
    /// Does what is due meanwhile, in the order of its times.
    void advance(std::chrono::milliseconds duration) {
        const std::chrono::milliseconds end = now_ + duration;
        while (const std::shared_ptr<Work> work = nextDue(end)) {
            now_ = work->due;
            if (work->interval)
                work->due += *work->interval;
            else
                work->isWaiting = false;
            const std::function<void()> run = work->run;  // it may end its own timer
            run();
        }
        now_ = end;
    }
    [[nodiscard]] std::size_t waitingCount() const {
        return static_cast<std::size_t>(
            std::ranges::count_if(works_, [](const auto &weak) { return isWaiting(weak.lock()); }));
    }

private:
    struct Work {
        std::chrono::milliseconds due{};
        std::optional<std::chrono::milliseconds> interval;
        std::function<void()> run;
        bool isWaiting = true;
    };
    class WorkTimer final : public Timer {
    public:
        explicit WorkTimer(std::shared_ptr<Work> work) : work_(std::move(work)) {}
        ~WorkTimer() override { work_->isWaiting = false; }
        WorkTimer(const WorkTimer &) = delete;
        WorkTimer &operator=(const WorkTimer &) = delete;

    private:
        std::shared_ptr<Work> work_;
    };

    static bool isWaiting(const std::shared_ptr<Work> &work) { return work && work->isWaiting; }

    std::unique_ptr<Timer> start(std::chrono::milliseconds delay,
                                 std::optional<std::chrono::milliseconds> interval,
                                 std::function<void()> run) {
        auto work = std::make_shared<Work>(
            Work{.due = now_ + delay, .interval = interval, .run = std::move(run)});
        works_.push_back(work);
        return std::make_unique<WorkTimer>(std::move(work));
    }
    [[nodiscard]] std::shared_ptr<Work> nextDue(std::chrono::milliseconds end) {
        std::erase_if(works_, [](const auto &weak) { return !isWaiting(weak.lock()); });
        std::shared_ptr<Work> next;
        for (const auto &weak : works_) {
            if (auto work = weak.lock(); work->due <= end && (!next || work->due < next->due))
                next = std::move(work);
        }
        return next;
    }

    std::chrono::milliseconds now_{};
    std::vector<std::weak_ptr<Work>> works_;
};

}  // namespace kestrelbay
