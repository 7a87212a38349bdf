#pragma once

#include "tasks/Clock.h"

namespace kestrelbay {

/// The time of this machine.
class SteadyClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return std::chrono::steady_clock::now(); }
};

}  // namespace kestrelbay
