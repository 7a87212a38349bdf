#include "platform/linux/x11/windows/UseOrder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kestrelbay::x11 {

void UseOrder::update(std::span<const xcb_window_t> list, std::span<const xcb_window_t> active) {
    const bool isNew = !std::ranges::equal(list, list_);
    if (isNew) {
        list_.assign(list.begin(), list.end());
        const std::unordered_set<xcb_window_t> left(list.begin(), list.end());
        const auto hasGone = [&](xcb_window_t window) { return !left.contains(window); };
        std::erase_if(windows_, hasGone);
        std::erase_if(used_, hasGone);
    }
    takeInActive(active);
    if (isNew)
        takeInList();
}

void UseOrder::takeInActive(std::span<const xcb_window_t> active) {
    const xcb_window_t now = active.empty() ? xcb_window_t{XCB_NONE} : active.front();
    const bool isOther = std::exchange(active_, now) != now;
    if (now_() >= passingUntil_)
        passing_.clear();
    if (now != asked_ && passing_.contains(now)) {
        isPassing_ = true;
        return;
    }
    const bool hasStayed = std::exchange(isPassing_, false);
    if (now == XCB_NONE || now == asked_ || (!isOther && !hasStayed))
        return;
    asked_ = XCB_NONE;
    passing_.clear();
    for (auto window = active.rbegin(); window != active.rend(); ++window)
        toFront(*window);
}

void UseOrder::takeInList() {
    std::vector<xcb_window_t> listed;
    std::vector<xcb_window_t> own;
    const auto isUsed = [this](xcb_window_t window) { return used_.contains(window); };
    std::ranges::copy_if(list_, std::back_inserter(listed), isUsed);
    std::ranges::copy_if(windows_, std::back_inserter(own), isUsed);
    if (own.empty() || (listed == own && list_.front() == own.front())) {
        windows_ = list_;
        return;
    }
    std::unordered_set<xcb_window_t> fresh(list_.begin(), list_.end());
    for (const xcb_window_t window : windows_)
        fresh.erase(window);
    if (fresh.empty())
        return;
    auto place = windows_.begin() + 1;
    for (const xcb_window_t window : list_)
        if (fresh.contains(window))
            place = windows_.insert(place, window) + 1;
        else
            place = std::ranges::find(windows_, window) + 1;
}

void UseOrder::expect(std::span<const xcb_window_t> windows) {
    std::ranges::for_each(windows, [this](xcb_window_t window) { toFront(window); });
    asked_ = windows.back();
    isPassing_ = false;
    if (windows.size() == 1)
        return;
    passing_.insert(windows.begin(), windows.end());
    passingUntil_ = now_() + kSettling;
}

void UseOrder::toFront(xcb_window_t window) {
    if (std::ranges::find(list_, window) == list_.end())
        return;
    used_.insert(window);
    std::erase(windows_, window);
    windows_.insert(windows_.begin(), window);
}

}  // namespace kestrelbay::x11
