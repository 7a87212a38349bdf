#pragma once

#include "tasks/Timers.h"

namespace kestrelbay {

/// Timers of the Qt event loop, exact to a millisecond.
class QtTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> once(std::chrono::milliseconds delay,
                                              std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                               std::function<void()> work) override;
};

}  // namespace kestrelbay
