#include "platform/linux/x11/windows/FocusOrder.h"

#include <algorithm>
#include <utility>

namespace kestrelbay::x11 {

void FocusOrder::askedToGive(const WindowAddress &window, std::vector<xcb_window_t> onTheWay) {
    asked({.window = window,
           .toHaveIt = true,
           .onTheWay = std::move(onTheWay),
           .when = now_(),
           .set = {}});
}

void FocusOrder::askedToTakeFrom(const WindowAddress &window) {
    asked({.window = window, .toHaveIt = false, .onTheWay = {}, .when = now_(), .set = {}});
}

void FocusOrder::asked(Request request) {
    const std::lock_guard lock(mutex_);
    last_ = std::move(request);
}

void FocusOrder::activeWindowSet(xcb_window_t root, std::uint32_t event) {
    const std::lock_guard lock(mutex_);
    if (last_ && last_->window.root == root && !last_->set)
        last_->set = event;
}

void FocusOrder::activeWindowRead(xcb_window_t root, xcb_window_t active, std::uint32_t request) {
    const std::lock_guard lock(mutex_);
    if (!last_ || last_->window.root != root || last_->isOver)
        return;
    const bool hasComeAbout = (active == last_->window.window) == last_->toHaveIt;
    // An event bears the number of the last request before it; the numbers begin anew some day.
    const bool wasSet = last_->set && static_cast<std::int32_t>(request - *last_->set) > 0;
    // The user or a program may have turned elsewhere, even back to where the focus was. Between
    // two windows there may be a moment without an active one.
    const bool isElsewhere = last_->toHaveIt && wasSet && active != XCB_NONE &&
                             std::ranges::find(last_->onTheWay, active) == last_->onTheWay.end();
    last_->isOver = hasComeAbout || isElsewhere;
}

bool FocusOrder::isAwaitedLocked() const {
    if (!last_)
        return false;
    const Clock::duration age = now_() - last_->when;
    return age < kShortest || (age < kLongest && !last_->isOver);
}

bool FocusOrder::isAwaited() const {
    const std::lock_guard lock(mutex_);
    return isAwaitedLocked();
}

std::optional<WindowAddress> FocusOrder::unheard() const {
    const std::lock_guard lock(mutex_);
    if (!isAwaitedLocked() || last_->isOver || last_->set || !last_->toHaveIt)
        return std::nullopt;
    return last_->window;
}

}  // namespace kestrelbay::x11
