#include "tasks/Timers.h"

#include <QTimer>

#include <utility>

namespace kestrelbay {

namespace {

class RunningTimer final : public Timers::Timer {
public:
    RunningTimer(std::chrono::milliseconds interval, bool once, std::function<void()> work)
        : timer_(new QTimer) {
        timer_->setTimerType(Qt::PreciseTimer);
        timer_->setSingleShot(once);
        // A copy, since the work may destroy the timer and with it the connection.
        QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [work = std::move(work)] {
            const std::function<void()> run = work;
            run();
        });
        timer_->start(interval);
    }

private:
    struct DeleteLater {
        void operator()(QTimer *timer) const {
            timer->stop();
            timer->deleteLater();
        }
    };
    // Its own signal may be under way.
    std::unique_ptr<QTimer, DeleteLater> timer_;
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
