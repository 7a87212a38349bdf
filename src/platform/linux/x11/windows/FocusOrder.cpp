#include "platform/linux/x11/windows/FocusOrder.h"

#include <algorithm>
#include <utility>

namespace kestrelbay::x11 {

bool FocusOrder::give(const WindowAddress &window, Others others, const Ask &ask) {
    const std::lock_guard lock(mutex_);
    last_ = {
        .window = window, .toHaveIt = true, .others = std::move(others), .when = now_(), .set = {}};
    return ask(window);
}

bool FocusOrder::repeatUnheard(const Ask &ask) {
    const std::lock_guard lock(mutex_);
    return mayBeUnheardLocked() && !last_->isOver && !last_->set && ask(last_->window);
}

bool FocusOrder::mayBeUnheardLocked() const {
    return last_ && last_->toHaveIt &&
           (!last_->isOver || last_->isPerhapsRefused || isOnTheWayLocked()) &&
           now_() - last_->when < kLongestUnheard;
}

bool FocusOrder::isOnTheWayLocked() const {
    return last_ && !last_->others.onTheWay.empty() && (!last_->isOver || last_->hasComeAbout);
}

std::vector<WindowAddress> FocusOrder::onTheWay() const {
    const std::lock_guard lock(mutex_);
    return isOnTheWayLocked() ? last_->others.onTheWay : std::vector<WindowAddress>();
}

bool FocusOrder::repeat(const Ask &ask) {
    const std::lock_guard lock(mutex_);
    return last_ && last_->toHaveIt && ask(last_->window);
}

std::optional<WindowAddress> FocusOrder::perhapsRefused() const {
    const std::lock_guard lock(mutex_);
    return last_ && last_->isPerhapsRefused ? std::optional(last_->window) : std::nullopt;
}

void FocusOrder::noteRefusal(const WindowAddress &window) {
    const std::lock_guard lock(mutex_);
    if (!last_ || !last_->isPerhapsRefused || last_->window.window != window.window)
        return;
    last_->isPerhapsRefused = false;
    last_->isOver = false;
    last_->set.reset();
}

bool FocusOrder::mayBeUnheard() const {
    const std::lock_guard lock(mutex_);
    return mayBeUnheardLocked();
}

void FocusOrder::take(const WindowAddress &window) {
    const std::lock_guard lock(mutex_);
    last_ = {.window = window, .toHaveIt = false, .others = {}, .when = now_(), .set = {}};
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
    const auto &[onTheWay, own] = last_->others;
    const bool isElsewhere =
        last_->toHaveIt && wasSet && active != XCB_NONE &&
        std::ranges::find(onTheWay, active, &WindowAddress::window) == onTheWay.end();
    last_->hasComeAbout = hasComeAbout;
    last_->isOver = hasComeAbout || isElsewhere;
    last_->isPerhapsRefused = isElsewhere && !hasComeAbout &&
                              std::ranges::find(own, active) == own.end() &&
                              now_() - last_->when < kNobodysChoice;
}

bool FocusOrder::isAwaited() const {
    const std::lock_guard lock(mutex_);
    if (!last_)
        return false;
    const Clock::duration age = now_() - last_->when;
    return age < kShortest || (age < kLongest && !last_->isOver);
}

}  // namespace kestrelbay::x11
