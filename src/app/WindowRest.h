#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <QObject>

#include "tasks/Timers.h"

namespace kestrelbay {

/// Tells when no window of the program has been in sight for a while, so that what only windows
/// and the start need can go. Sleeps but for one timer, which runs from the start, or from the
/// moment that a window has gone out of sight, and only while none is in sight. Main thread.
class WindowRest final : public QObject {
    Q_OBJECT

public:
    /// Whoever closes a window by mistake, or looks something up, has opened it again by then.
    static constexpr std::chrono::seconds kDelay{30};
    /// The desktop entries have been read by then, which goes on in the background.
    static constexpr std::chrono::seconds kDelayOfStart{3};

    /// `begun` is called from the event loop, once each time. The application and the timers have
    /// to outlive this.
    WindowRest(Timers &timers, std::function<void()> begun);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void waitFor(std::chrono::seconds delay);

    Timers &timers_;
    const std::function<void()> begun_;
    std::unique_ptr<Timers::Timer> timer_;
};

}  // namespace kestrelbay
