#pragma once

#include <chrono>
#include <functional>
#include <memory>

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

/// Work for later. Main thread.
class Timers {
public:
    /// Work that is waited for; destroyed, it is no longer. Work may destroy its own.
    class Timer {
    public:
        virtual ~Timer() = default;
    };

    virtual ~Timers() = default;

    [[nodiscard]] virtual std::unique_ptr<Timer> once(std::chrono::milliseconds delay,
                                                      std::function<void()> work) = 0;
    /// The first time after one interval.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                                       std::function<void()> work) = 0;
};

/// Timers of the Qt event loop, exact to a millisecond.
class QtTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> once(std::chrono::milliseconds delay,
                                              std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval,
                                               std::function<void()> work) override;
};

}  // namespace kestrelbay
