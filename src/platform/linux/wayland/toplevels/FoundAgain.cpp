#include "platform/linux/wayland/toplevels/FoundAgain.h"

#include <algorithm>

namespace kestrelbay::wayland {

namespace {

bool isOfOneApplication(const DesktopWindow &one, const DesktopWindow &other) {
    return one.facts.className == other.facts.className && one.facts.pid == other.facts.pid;
}

bool isAlike(const DesktopWindow &one, const DesktopWindow &other) {
    return isOfOneApplication(one, other) && one.title == other.title;
}

}  // namespace

std::vector<std::int64_t> foundAgain(std::span<const DesktopWindow> before,
                                     std::span<const DesktopWindow> now) {
    std::vector<std::int64_t> found(before.size());
    for (const auto isSame : {isAlike, isOfOneApplication}) {
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (found[i] != 0)
                continue;
            const auto again = std::ranges::find_if(now, [&](const DesktopWindow &window) {
                return isSame(before[i], window) &&
                       std::ranges::find(found, window.id) == found.end();
            });
            if (again != now.end())
                found[i] = again->id;
        }
    }
    std::erase(found, 0);
    return found;
}

}  // namespace kestrelbay::wayland
