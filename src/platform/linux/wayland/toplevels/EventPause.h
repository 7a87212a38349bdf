#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace kestrelbay::wayland {

/// For how long the events of other programs' windows, of which each change of a title is one, may
/// wait in the socket until somebody looks at them: as long as few come, for minutes. A compositor
/// hangs up on who leaves it more of them than the socket holds.
class EventPause {
public:
    using Clock = std::chrono::steady_clock;

    /// At first, and when events come after none came for long.
    static constexpr std::chrono::milliseconds kFirst{std::chrono::seconds(2)};
    static constexpr std::chrono::milliseconds kShortest{100};
    static constexpr std::chrono::milliseconds kLongest{std::chrono::minutes(5)};
    /// So many events are to come in a pause. The socket holds 270, in Linux's usual size for
    /// local ones, when each is sent by itself.
    static constexpr std::int64_t kWanted = 64;

    /// The pause after a look that has found so many.
    [[nodiscard]] std::chrono::milliseconds after(std::size_t count, Clock::time_point now);

private:
    std::chrono::milliseconds pause_ = kFirst;
    Clock::time_point looked_{};
};

}  // namespace kestrelbay::wayland
