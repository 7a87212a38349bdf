#pragma once

#include <chrono>
#include <memory>

#include <QThreadPool>

#include "tasks/DispatchQueue.h"

namespace kestrelbay {

/// Runs every piece of work at once on a thread of its own, so that one that hangs
/// in a call to another program holds nothing else up. Threads are kept for reuse
/// and then sleep without a time limit: an idle program never wakes up for them.
class ThreadPoolQueue final : public DispatchQueue {
public:
    explicit ThreadPoolQueue(std::chrono::milliseconds patience = std::chrono::milliseconds(500));

    /// Waits no longer than the patience for work to end. Work that hangs even then
    /// is abandoned: it keeps its thread and whatever it refers to may be gone, so
    /// the process has to end soon.
    ~ThreadPoolQueue() override;
    ThreadPoolQueue(const ThreadPoolQueue &) = delete;
    ThreadPoolQueue &operator=(const ThreadPoolQueue &) = delete;

    void async(std::function<void()> work) override;

private:
    std::chrono::milliseconds patience_;
    std::unique_ptr<QThreadPool> pool_;
};

}  // namespace kestrelbay
