#include "tasks/DispatchQueue.h"

#include <limits>
#include <utility>

namespace kestrelbay {

void MainQueue::async(std::function<void()> work) {
    QMetaObject::invokeMethod(&receiver_, std::move(work), Qt::QueuedConnection);
}

ThreadPoolQueue::ThreadPoolQueue(std::chrono::milliseconds patience)
    : patience_(patience), pool_(std::make_unique<QThreadPool>()) {
    pool_->setMaxThreadCount(std::numeric_limits<int>::max());
    pool_->setExpiryTimeout(-1);
}

ThreadPoolQueue::~ThreadPoolQueue() {
    // The pool's own destructor waits for ever.
    if (!pool_->waitForDone(static_cast<int>(patience_.count())))
        static_cast<void>(pool_.release());
}

}  // namespace kestrelbay
