#include "tasks/Timers.h"

#include <QObject>

#include <utility>

namespace kestrelbay {

namespace {

// No QTimer: that is not to be deleted while it signals, and later may be never, at the end of
// the program.
class RunningTimer final : public QObject, public Timers::Timer {
public:
    RunningTimer(std::chrono::milliseconds interval, bool once, std::function<void()> work)
        : work_(std::move(work)), isOnce_(once), id_(startTimer(interval, Qt::PreciseTimer)) {}

protected:
    void timerEvent(QTimerEvent * /*event*/) override {
        if (isOnce_)
            killTimer(id_);
        // A copy, since the work may destroy the timer.
        const std::function<void()> run = work_;
        run();
    }

private:
    const std::function<void()> work_;
    const bool isOnce_;
    const int id_;
};

}  // namespace

std::unique_ptr<Timers::Timer> QtTimers::once(std::chrono::milliseconds delay,
                                              std::function<void()> work) {
    return std::make_unique<RunningTimer>(delay, true, std::move(work));
}

std::unique_ptr<Timers::Timer> QtTimers::every(std::chrono::milliseconds interval,
                                               std::function<void()> work) {
    return std::make_unique<RunningTimer>(interval, false, std::move(work));
}

}  // namespace kestrelbay
