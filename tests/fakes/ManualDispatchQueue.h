#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

#include "tasks/DispatchQueue.h"

namespace kestrelbay {

/// Keeps work until the test runs it, on the test's own thread.
class ManualDispatchQueue final : public DispatchQueue {
public:
    void async(std::function<void()> work) override {
        const std::scoped_lock lock(mutex_);
        pending_.push_back(std::move(work));
    }

    // For the test:
    [[nodiscard]] std::size_t pendingCount() const {
        const std::scoped_lock lock(mutex_);
        return pending_.size();
    }

    /// The oldest work, which is to be run elsewhere. Empty when there is none.
    [[nodiscard]] std::function<void()> takeNext() {
        const std::scoped_lock lock(mutex_);
        if (pending_.empty())
            return {};
        std::function<void()> work = std::move(pending_.front());
        pending_.pop_front();
        return work;
    }

    /// Runs the oldest work. False when there is none.
    bool runNext() {
        const std::function<void()> work = takeNext();
        if (!work)
            return false;
        work();
        return true;
    }

    /// Runs all work, including what the work itself queues.
    void runAll() {
        while (runNext()) {
        }
    }

private:
    mutable std::mutex mutex_;
    std::deque<std::function<void()>> pending_;
};

}  // namespace kestrelbay
