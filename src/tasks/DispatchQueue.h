#pragma once

#include <chrono>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

#include <QObject>
#include <QThreadPool>

namespace kestrelbay {

/// Where work is put off to. Any thread may hand work in; async() never waits
/// for it.
class DispatchQueue {
public:
    virtual ~DispatchQueue() = default;
    virtual void async(std::function<void()> work) = 0;
};

/// Puts work off to the event loop of the thread that made it, which is the main
/// one. Work that is still waiting when the queue is destroyed never runs; the
/// queue has to outlive those who hand work in.
class MainQueue final : public DispatchQueue {
public:
    void async(std::function<void()> work) override {
        QMetaObject::invokeMethod(&receiver_, std::move(work), Qt::QueuedConnection);
    }

private:
    QObject receiver_;
};

/// Runs every piece of work at once on a thread of its own, so that one that hangs
/// in a call to another program holds nothing else up. Threads are kept for reuse
/// and then sleep without a time limit: an idle program never wakes up for them.
class ThreadPoolQueue final : public DispatchQueue {
public:
    /// A thread calls `prepareThread`, which may be empty, before each piece of work.
    explicit ThreadPoolQueue(std::function<void()> prepareThread = {},
                             std::chrono::milliseconds patience = std::chrono::milliseconds(500))
        : prepareThread_(std::move(prepareThread)),
          patience_(patience),
          pool_(std::make_unique<QThreadPool>()) {
        pool_->setMaxThreadCount(std::numeric_limits<int>::max());
        pool_->setExpiryTimeout(-1);
    }

    /// Waits no longer than the patience for work to end. Work that hangs even then
    /// is abandoned: it keeps its thread and whatever it refers to may be gone, so
    /// the process has to end soon.
    ~ThreadPoolQueue() override {
        // The pool's own destructor waits for ever.
        if (!pool_->waitForDone(static_cast<int>(patience_.count())))
            static_cast<void>(pool_.release());
    }

    /// Ends all threads unless one is at work: some libraries keep for a thread what it has used
    /// once. Later work gets new ones.
    void endIdleThreads() { static_cast<void>(pool_->waitForDone(0)); }

    void async(std::function<void()> work) override {
        pool_->start([prepare = prepareThread_, work = std::move(work)] {
            if (prepare)
                prepare();
            work();
        });
    }

private:
    const std::function<void()> prepareThread_;
    std::chrono::milliseconds patience_;
    std::unique_ptr<QThreadPool> pool_;
};

}  // namespace kestrelbay
