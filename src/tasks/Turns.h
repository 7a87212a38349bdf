#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>

namespace kestrelbay {

/// Has pieces of work that each have a thread of their own done one after the other, in the
/// order in which they were asked for. When one takes longer than the patience, the next one
/// begins all the same; what they contend for is the later one's then.
class Turns {
    using Clock = std::chrono::steady_clock;

    /// What a turn knows of the one before it.
    struct Neighbour {
        std::shared_future<Clock::time_point> began;
        std::shared_future<void> ended;
    };

public:
    /// The place of one piece of work. One that is given up holds nobody up.
    class Turn {
    public:
        Turn(std::uint64_t number, std::chrono::milliseconds patience, Neighbour previous,
             std::shared_ptr<std::atomic<std::uint64_t>> lastClaim);
        ~Turn();
        Turn(const Turn &) = delete;
        Turn &operator=(const Turn &) = delete;

        /// Has the one before ended? Any thread.
        [[nodiscard]] bool isNext() const;

        /// Does the work when the one before has ended, or has gone on for longer than the
        /// patience. To be called once, on the thread of the work.
        void run(const std::function<void()> &work);

        /// Claims what the turns contend for. False when a later turn has done so before. Any
        /// thread.
        [[nodiscard]] bool claim();

    private:
        friend class Turns;

        const std::uint64_t number_;
        const std::chrono::milliseconds patience_;
        const Neighbour previous_;
        const std::shared_ptr<std::atomic<std::uint64_t>> lastClaim_;
        std::promise<Clock::time_point> began_;
        std::promise<void> ended_;
        bool hasRun_ = false;
    };

    explicit Turns(std::chrono::milliseconds patience);

    /// The turn behind all that were taken before. Always from one thread.
    [[nodiscard]] std::shared_ptr<Turn> take();

private:
    const std::chrono::milliseconds patience_;
    std::uint64_t taken_ = 0;
    Neighbour last_;
    const std::shared_ptr<std::atomic<std::uint64_t>> lastClaim_ =
        std::make_shared<std::atomic<std::uint64_t>>(0);
};

}  // namespace kestrelbay
