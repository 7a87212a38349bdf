#pragma once

#include <chrono>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

namespace kestrelbay {

/// Says beside a benchmark's figure what was to be reached, and whether it was. Missing it is no
/// failure: how fast a machine is does not make a program wrong.
class Goal {
public:
    /// What an iteration may take, and all that is to be reached in words. Made right before
    /// the loop.
    Goal(std::chrono::nanoseconds limit, std::string words)
        : limit_(limit), words_(std::move(words)) {}

    /// Called right behind the loop.
    void judge(benchmark::State &state, bool isElseReached = true) const {
        const auto each = (Clock::now() - start_) / state.iterations();
        const bool isReached = isElseReached && each <= limit_;
        state.SetLabel("goal " + words_ + (isReached ? ": reached" : ": MISSED"));
    }

private:
    using Clock = std::chrono::steady_clock;

    std::chrono::nanoseconds limit_;
    std::string words_;
    Clock::time_point start_ = Clock::now();
};

}  // namespace kestrelbay
