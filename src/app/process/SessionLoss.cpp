#include "app/process/SessionLoss.h"

#include <cstdlib>

#include "platform/SystemLog.h"

namespace kestrelbay {

namespace {

/// Where to say it. Null while the program may come to its own end.
SystemLog *log = nullptr;

void end() {
    if (log == nullptr)
        return;
    log->write(QStringLiteral("KestrelBay [WARN] The connection to the display is gone, ending"));
    // Other threads are still at work with what would be destroyed on the way out.
    std::_Exit(EXIT_FAILURE);
}

/// std::exit destroys the thread's own objects before any static one and before what std::atexit
/// has been given, so that all that end() uses is still there.
struct ExitWatch {
    ExitWatch() = default;
    ~ExitWatch() { end(); }
    ExitWatch(const ExitWatch &) = delete;
    ExitWatch &operator=(const ExitWatch &) = delete;
};

}  // namespace

SessionLoss::SessionLoss(Platform &platform) : platform_(platform) {
    log = &platform.systemLog();
    platform.setSessionEndedHandler(end);
    [[maybe_unused]] static const thread_local ExitWatch watch;
}

SessionLoss::~SessionLoss() {
    platform_.setSessionEndedHandler({});
    log = nullptr;
}

}  // namespace kestrelbay
