#pragma once

#include <span>
#include <unordered_set>
#include <vector>

#include <xcb/xcb.h>

namespace kestrelbay::x11 {

/// The windows of a screen in the order in which they were last active. Stacking lists
/// can't tell: some window managers bring theirs up to date late, or never.
class UseOrder {
public:
    /// Takes in which windows there are and which are active: a dialog with the windows it
    /// belongs to, from itself on.
    ///
    /// The list, front-most first, stands where it agrees with the use that is known. Where it
    /// does not, a new window comes behind the one that the list has before it, and never in
    /// front of all.
    void update(std::span<const xcb_window_t> list, std::span<const xcb_window_t> active);

    /// This window has been asked to become active, and counts as that from now on: it may
    /// be so short a time that nobody sees it.
    void expect(xcb_window_t window);

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
    /// Of several that were asked one after the other, the earlier ones may still be seen
    /// active on the way.
    std::vector<xcb_window_t> expected_;
};

}  // namespace kestrelbay::x11
