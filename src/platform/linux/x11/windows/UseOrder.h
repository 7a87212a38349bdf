#pragma once

#include <chrono>
#include <functional>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace kestrelbay::x11 {

/// The windows of a screen in the order in which they were last active. Stacking lists
/// can't tell: some window managers bring theirs up to date late, or never.
class UseOrder {
public:
    using Clock = std::chrono::steady_clock;

    /// So long after several windows have been asked for at once, any of them may be active for a
    /// moment, even after the last: fluxbox goes by the events of the focus, which cross.
    static constexpr std::chrono::milliseconds kSettling{300};

    explicit UseOrder(std::function<Clock::time_point()> now = Clock::now) : now_(std::move(now)) {}

    /// Takes in which windows there are and which are active: a dialog with the windows it
    /// belongs to, from itself on.
    ///
    /// The list, front-most first, stands where it agrees with the use that is known. Where it
    /// does not, a new window comes behind the one that the list has before it, and never in
    /// front of all.
    void update(std::span<const xcb_window_t> list, std::span<const xcb_window_t> active);

    /// These windows, at least one, have been asked to become active, one after the other, and
    /// count as that from now on: it may be so short a time that nobody sees it.
    void expect(std::span<const xcb_window_t> windows);

    /// Those of the last list, the last used one first.
    [[nodiscard]] const std::vector<xcb_window_t> &windows() const { return windows_; }

private:
    void takeInActive(std::span<const xcb_window_t> active);
    void takeInList();
    void toFront(xcb_window_t window);

    std::vector<xcb_window_t> list_;
    std::vector<xcb_window_t> windows_;
    /// Those of them that have been active.
    std::unordered_set<xcb_window_t> used_;
    xcb_window_t active_ = XCB_NONE;
    /// The last that was asked to become active, as long as the user goes nowhere else.
    xcb_window_t asked_ = XCB_NONE;
    /// Those that may be active for a moment only.
    std::unordered_set<xcb_window_t> passing_;
    Clock::time_point passingUntil_;
    /// The active one is one of these.
    bool isPassing_ = false;
    std::function<Clock::time_point()> now_;
};

}  // namespace kestrelbay::x11
