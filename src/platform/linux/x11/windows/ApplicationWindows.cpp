#include "platform/linux/x11/windows/ApplicationWindows.h"

#include <algorithm>
#include <iterator>
#include <thread>
#include <utility>

namespace kestrelbay::x11 {

namespace {

bool isInView(const WindowState &state) {
    return state.managed && !state.minimized;
}

}  // namespace

std::vector<ApplicationGroup> groupApplications(const DesktopPicture &picture) {
    ApplicationGrouping grouping;
    for (std::size_t i = 0; i < picture.windows.size(); ++i) {
        const ManagedWindow &window = picture.windows[i];
        grouping.add(i, *window.facts, *window.matches, window.active);
    }
    return grouping.take();
}

ApplicationWindows::ApplicationWindows(std::shared_ptr<WindowTracker> tracker,
                                       const DesktopPicture &picture, const ApplicationGroup &group)
    : tracker_(std::move(tracker)),
      index_(picture.index),
      time_(picture.serverTime),
      timeAskedAt_(picture.when) {
    for (const std::size_t window : group.windows)
        if (picture.windows[window].facts->type != WindowType::Decoration)
            windows_.push_back(picture.windows[window]);
    if (!std::ranges::all_of(windows_, [](const ManagedWindow &w) { return w.state.has_value(); }))
        return;
    std::ranges::transform(windows_, std::back_inserter(states_),
                           [](const ManagedWindow &window) { return *window.state; });
    readAt_ = timeAskedAt_;
}

ApplicationWindows::~ApplicationWindows() {
    restoreAsked();
}

xcb_timestamp_t ApplicationWindows::freshTime() {
    if (std::chrono::steady_clock::now() - timeAskedAt_ >= kStatesLast)
        askTime();
    return time_;
}

void ApplicationWindows::askTime() {
    timeAskedAt_ = std::chrono::steady_clock::now();
    time_ = tracker_->serverTime();
}

void ApplicationWindows::readStates() {
    const auto now = std::chrono::steady_clock::now();
    if (!states_.empty() && now - readAt_ < kStatesLast)
        return;
    states_ = tracker_->readStates(addresses());
    readAt_ = now;
}

std::vector<WindowAddress> ApplicationWindows::addresses() const {
    std::vector<WindowAddress> all(windows_.size());
    std::ranges::transform(windows_, all.begin(), &ManagedWindow::address);
    return all;
}

std::vector<std::size_t> ApplicationWindows::listed() {
    readStates();
    std::vector<std::size_t> ordinary;
    std::vector<std::size_t> all;
    for (std::size_t i = 0; i < windows_.size(); ++i) {
        if (!states_[i].exists)
            continue;
        all.push_back(i);
        if (!windows_[i].facts->isTransient() && windows_[i].facts->type != WindowType::Utility &&
            !states_[i].skipsTaskbar)
            ordinary.push_back(i);
    }
    return ordinary.empty() ? all : ordinary;
}

bool ApplicationWindows::areMinimized() {
    const std::vector<std::size_t> list = listed();
    const auto isMinimized = [this](std::size_t window) { return states_[window].minimized; };
    if (!list.empty() && std::ranges::all_of(list, isMinimized))
        return true;
    const auto active = std::ranges::find(windows_, true, &ManagedWindow::active);
    return active != windows_.end() &&
           isMinimized(static_cast<std::size_t>(active - windows_.begin()));
}

std::optional<WindowState> ApplicationWindows::state(std::size_t window) {
    if (returning_.contains(window))
        restoreAsked();
    readStates();
    return states_[window].exists ? std::optional(states_[window]) : std::nullopt;
}

bool ApplicationWindows::setMinimized(std::size_t window, bool minimized) {
    if (!minimized) {
        returning_.insert(window);
        return tracker_->windowSystem().connection().isUsable();
    }
    returning_.erase(window);
    states_.clear();
    return tracker_->windowSystem().minimize(windows_[window].address);
}

void ApplicationWindows::restoreAsked() {
    if (returning_.empty())
        return;
    readStates();
    std::vector<WindowAddress> addresses;
    for (auto window = returning_.rbegin(); window != returning_.rend(); ++window) {
        if (!states_[*window].exists)
            continue;
        addresses.push_back(windows_[*window].address);
        restored_.push_back(addresses.back());
    }
    if (!addresses.empty())
        tracker_->expectActive(restored_);
    // Programs may have told of their use since the picture, as when they were hidden.
    askTime();
    tracker_->windowSystem().restore(addresses, time_);
    returning_.clear();
    states_.clear();
}

bool ApplicationWindows::raise(std::size_t window) {
    restoreAsked();
    return tracker_->windowSystem().raise(windows_[window].address);
}

bool ApplicationWindows::focus(std::size_t window) {
    readStates();
    const std::optional<std::uint32_t> otherWorkspace = states_[window].otherWorkspace;
    restoreAsked();
    states_.clear();
    focused_ = window;
    const WindowAddress &address = windows_[window].address;
    const xcb_timestamp_t time = freshTime();
    // Some window managers go to the window's workspace by themselves; others refuse
    // to activate what is not in view.
    if (otherWorkspace)
        tracker_->windowSystem().showWorkspace(address, *otherWorkspace, time);
    std::vector<xcb_window_t> own;
    std::ranges::transform(windows_, std::back_inserter(own),
                           [](const ManagedWindow &one) { return one.address.window; });
    return tracker_->giveFocus(address, time, {.onTheWay = restored_, .own = std::move(own)});
}

/// A dialog goes and comes with the window it belongs to. Minimised by itself, it
/// would be left behind when that window is brought back from a task bar.
bool ApplicationWindows::isOwnersBusiness(const ManagedWindow &window) const {
    return std::any_of(windows_.begin(), windows_.end(), [&](const ManagedWindow &other) {
        return window.facts->transientForGroup ? !other.facts->isTransient()
                                               : other.address.window == window.facts->transientFor;
    });
}

void ApplicationWindows::minimizeAndWait(const std::vector<std::size_t> &windows) {
    // The back-most first: the focus does not wander over those that go as well.
    for (auto window = windows.rbegin(); window != windows.rend(); ++window)
        tracker_->windowSystem().minimize(windows_[*window].address);
    const auto end = std::chrono::steady_clock::now() + kManagerAnswers;
    while (std::chrono::steady_clock::now() < end) {
        states_.clear();
        readStates();
        if (std::ranges::none_of(windows, [this](std::size_t i) { return isInView(states_[i]); }))
            return;
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

bool ApplicationWindows::minimizeAll() {
    returning_.clear();
    focused_.reset();
    std::vector<std::size_t> ordinary;
    std::vector<std::size_t> dialogs;
    for (std::size_t i = 0; i < windows_.size(); ++i)
        (isOwnersBusiness(windows_[i]) ? dialogs : ordinary).push_back(i);
    if (const auto active = std::ranges::find(windows_, true, &ManagedWindow::active);
        active != windows_.end())
        tracker_->takeFocusFrom(active->address);
    minimizeAndWait(ordinary);
    // Some window managers leave the dialogs of a group, which then keep the focus.
    readStates();
    std::erase_if(dialogs, [this](std::size_t i) { return !isInView(states_[i]); });
    if (!dialogs.empty())
        minimizeAndWait(dialogs);
    readStates();
    // Not every window manager can minimise, or not every window.
    if (std::ranges::any_of(states_, isInView))
        focusAnother();
    return !windows_.empty() && tracker_->windowSystem().connection().isUsable();
}

void ApplicationWindows::focusAnother() const {
    const DesktopPicture picture = tracker_->read(index_);
    bool isAnotherActive = false;
    std::vector<WindowAddress> others;
    for (const ManagedWindow &window : picture.windows) {
        const bool isOurs = std::ranges::any_of(windows_, [&](const ManagedWindow &own) {
            return own.address.window == window.address.window;
        });
        isAnotherActive |= !isOurs && window.active;
        if (!isOurs && window.facts->type != WindowType::Decoration)
            others.push_back(window.address);
    }
    // None may be for a moment, before a dialog of ours gets the focus.
    if (isAnotherActive)
        return;
    const std::vector<WindowState> states = tracker_->windowSystem().readStates(others);
    for (std::size_t i = 0; i < others.size(); ++i)
        if (isInView(states[i]) && !states[i].otherWorkspace) {
            tracker_->giveFocus(others[i], picture.serverTime, {});
            return;
        }
}

bool ApplicationWindows::activate() {
    if (main_ && focused_ == main_)
        return true;
    const std::vector<std::size_t> list = listed();
    if (list.empty())
        return false;
    // Those that no task bar shows went with the others, and come with them.
    for (std::size_t i = 0; i < windows_.size(); ++i)
        if (states_[i].minimized && std::ranges::find(list, i) == list.end())
            returning_.insert(i);
    return focus(main_.value_or(list.front()));
}

}  // namespace kestrelbay::x11
