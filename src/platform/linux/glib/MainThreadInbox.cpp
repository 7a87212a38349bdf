#include "platform/linux/glib/MainThreadInbox.h"

#include <utility>

#include <QMetaObject>

namespace kestrelbay {

std::shared_ptr<MainThreadInbox> MainThreadInbox::make() {
    return std::shared_ptr<MainThreadInbox>(new MainThreadInbox);
}

void MainThreadInbox::post(std::function<void()> work) {
    const std::lock_guard lock(mutex_);
    if (!receiver_)
        return;
    waiting_.push_back(std::move(work));
    posted_.notify_one();
    QMetaObject::invokeMethod(
        receiver_.get(), [self = shared_from_this()] { self->runAll(); }, Qt::QueuedConnection);
}

bool MainThreadInbox::waitUntil(const std::function<bool()> &condition,
                                std::chrono::milliseconds timeout) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    runAll();
    while (!condition()) {
        {
            std::unique_lock lock(mutex_);
            if (!posted_.wait_until(lock, end, [this] { return !waiting_.empty(); }))
                return false;
        }
        runAll();
    }
    return true;
}

void MainThreadInbox::close() {
    std::unique_ptr<QObject> receiver;
    std::deque<std::function<void()>> dropped;
    const std::lock_guard lock(mutex_);
    receiver.swap(receiver_);
    dropped.swap(waiting_);
}

void MainThreadInbox::runAll() {
    // Work may end the object it is for, and close the inbox with it.
    const std::shared_ptr<MainThreadInbox> self = shared_from_this();
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            if (waiting_.empty())
                return;
            work = std::move(waiting_.front());
            waiting_.pop_front();
        }
        work();
    }
}

}  // namespace kestrelbay
