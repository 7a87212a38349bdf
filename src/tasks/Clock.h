#pragma once

#include <chrono>

namespace kestrelbay {

/// Time that only moves forward. Any thread.
class Clock {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~Clock() = default;
    [[nodiscard]] virtual TimePoint now() const = 0;
};

/// The time of this machine.
class SteadyClock final : public Clock {
public:
    [[nodiscard]] TimePoint now() const override { return std::chrono::steady_clock::now(); }
};

}  // namespace kestrelbay
