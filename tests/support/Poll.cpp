#include "support/Poll.h"

#include <ctime>

#include <QCoreApplication>

namespace kestrelbay::testing {

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        if (QCoreApplication::instance() != nullptr)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        struct timespec pause {
            0, 500'000
        };
        ::nanosleep(&pause, nullptr);
    }
    return true;
}

}  // namespace kestrelbay::testing
