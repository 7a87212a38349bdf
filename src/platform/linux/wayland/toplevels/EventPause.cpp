#include "platform/linux/wayland/toplevels/EventPause.h"

#include <algorithm>
#include <utility>

namespace kestrelbay::wayland {

std::chrono::milliseconds EventPause::after(std::size_t count, Clock::time_point now) {
    const auto passed =
        std::chrono::duration_cast<std::chrono::milliseconds>(now - std::exchange(looked_, now));
    if (passed > 2 * pause_) {
        pause_ = kFirst;
    } else {
        const auto wanted =
            pause_ * kWanted / std::max<std::int64_t>(static_cast<std::int64_t>(count), 1);
        pause_ = std::clamp(std::min(wanted, 2 * pause_), kShortest, kLongest);
    }
    return pause_;
}

}  // namespace kestrelbay::wayland
