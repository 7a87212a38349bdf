#include "tasks/MainQueue.h"

#include <utility>

namespace kestrelbay {

void MainQueue::async(std::function<void()> work) {
    QMetaObject::invokeMethod(&receiver_, std::move(work), Qt::QueuedConnection);
}

}  // namespace kestrelbay
