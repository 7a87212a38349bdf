#include "platform/linux/x11/windows/UseOrder.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace kestrelbay::x11 {

void UseOrder::update(std::span<const xcb_window_t> list, std::span<const xcb_window_t> active) {
    const xcb_window_t now = active.empty() ? xcb_window_t{XCB_NONE} : active.front();
    if (!std::ranges::equal(list, list_)) {
        list_.assign(list.begin(), list.end());
        takeIn(now);
    }
    if (std::exchange(active_, now) == now || now == XCB_NONE)
        return;
    const bool isExpected = std::ranges::count(expected_, now) != 0;
    if (!isExpected || expected_.back() == now)
        expected_.clear();
    if (isExpected)
        return;
    for (auto window = active.rbegin(); window != active.rend(); ++window)
        toFront(*window);
}

void UseOrder::takeIn(xcb_window_t active) {
    // A list that has not even the active window first can't tell what is in front of others.
    const bool isTrusted = !list_.empty() && list_.front() == active;
    std::unordered_set<xcb_window_t> fresh(list_.begin(), list_.end());
    std::erase_if(used_, [&](xcb_window_t window) { return !fresh.contains(window); });
    std::erase_if(windows_, [&](xcb_window_t window) {
        return !fresh.contains(window) || (isTrusted && !used_.contains(window)) ||
               fresh.erase(window) == 0;
    });
    if (fresh.empty())
        return;
    auto place = windows_.begin() + (windows_.empty() || isTrusted ? 0 : 1);
    for (const xcb_window_t window : list_)
        if (fresh.contains(window))
            place = windows_.insert(place, window) + 1;
        else
            place = std::ranges::find(windows_, window) + 1;
}

void UseOrder::expect(xcb_window_t window) {
    expected_.push_back(window);
    toFront(window);
}

void UseOrder::toFront(xcb_window_t window) {
    used_.insert(window);
    if (const auto at = std::ranges::find(windows_, window); at != windows_.end())
        std::rotate(windows_.begin(), at, at + 1);
}

}  // namespace kestrelbay::x11
