#pragma once

#include <atomic>

#include "tasks/Timers.h"

namespace kestrelbay {

/// Time that only a test moves.
class FakeClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return TimePoint(sinceStart_.load()); }

    // For the test:
    void advance(TimePoint::duration duration) { sinceStart_ = sinceStart_.load() + duration; }

private:
    std::atomic<TimePoint::duration> sinceStart_ = TimePoint::duration::zero();
};

}  // namespace kestrelbay
