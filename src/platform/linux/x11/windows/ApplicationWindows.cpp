#include "platform/linux/x11/windows/ApplicationWindows.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include <QString>

namespace kestrelbay::x11 {

std::vector<ApplicationGroup> groupApplications(const DesktopPicture &picture) {
    std::vector<ApplicationGroup> groups;
    std::unordered_map<std::size_t, std::size_t> byEntry;
    std::unordered_map<std::int64_t, std::size_t> byPid;
    std::unordered_map<QString, std::size_t> byClass;

    const auto add = [&](auto &table, const auto &key, std::size_t window,
                         std::optional<std::size_t> entry) {
        const ManagedWindow &managed = picture.windows[window];
        const auto [at, isNew] = table.try_emplace(key, groups.size());
        if (isNew)
            groups.push_back(
                {.entry = entry, .pid = managed.facts->pid, .active = false, .windows = {}});
        ApplicationGroup &group = groups[at->second];
        group.windows.push_back(window);
        group.active |= managed.active;
    };

    for (std::size_t i = 0; i < picture.windows.size(); ++i) {
        const ManagedWindow &window = picture.windows[i];
        for (const ApplicationMatch &match : *window.matches)
            add(byEntry, match.entry, i, match.entry);
        if (!window.matches->empty() || window.facts->isAnonymous())
            continue;
        if (window.facts->pid > 0)
            add(byPid, window.facts->pid, i, std::nullopt);
        else
            add(byClass, window.facts->instance + QChar(u'\n') + window.facts->className, i,
                std::nullopt);
    }
    return groups;
}

ApplicationWindows::ApplicationWindows(std::shared_ptr<WindowTracker> tracker,
                                       const DesktopPicture &picture, const ApplicationGroup &group)
    : tracker_(std::move(tracker)), pictureTime_(picture.serverTime) {
    for (const std::size_t window : group.windows)
        if (picture.windows[window].facts->type != WindowType::Decoration)
            windows_.push_back(picture.windows[window]);
}

xcb_timestamp_t ApplicationWindows::freshTime() const {
    return std::chrono::steady_clock::now() - madeAt_ < kStatesLast ? pictureTime_
                                                                    : tracker_->serverTime();
}

void ApplicationWindows::readStates() {
    const auto now = std::chrono::steady_clock::now();
    if (!states_.empty() && now - readAt_ < kStatesLast)
        return;
    states_ = tracker_->windowSystem().readStates(addresses());
    readAt_ = now;
    tracker_->processQueuedEvents();
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

bool ApplicationWindows::isActiveOneMinimized() {
    const auto active = std::ranges::find(windows_, true, &ManagedWindow::active);
    if (active == windows_.end())
        return false;
    readStates();
    return states_[static_cast<std::size_t>(active - windows_.begin())].minimized;
}

std::optional<WindowState> ApplicationWindows::state(std::size_t window) {
    readStates();
    return states_[window].exists ? std::optional(states_[window]) : std::nullopt;
}

bool ApplicationWindows::setMinimized(std::size_t window, bool minimized) {
    states_.clear();
    const WindowAddress &address = windows_[window].address;
    return minimized ? tracker_->windowSystem().minimize(address)
                     : tracker_->windowSystem().restore(address, freshTime());
}

bool ApplicationWindows::raise(std::size_t window) {
    return tracker_->windowSystem().raise(windows_[window].address);
}

bool ApplicationWindows::focus(std::size_t window) {
    readStates();
    const std::optional<std::uint32_t> otherWorkspace = states_[window].otherWorkspace;
    states_.clear();
    focused_ = window;
    const WindowSystem &system = tracker_->windowSystem();
    const WindowAddress &address = windows_[window].address;
    const xcb_timestamp_t time = freshTime();
    // Some window managers go to the window's workspace by themselves; others refuse
    // to activate what is not in view.
    if (otherWorkspace)
        system.showWorkspace(address, *otherWorkspace, time);
    tracker_->focusOrder().asked(address, true);
    return system.activate(address, time);
}

/// A dialog goes and comes with the window it belongs to. Minimised by itself, it
/// would be left behind when that window comes back.
bool ApplicationWindows::isOwnersBusiness(const ManagedWindow &window) const {
    return std::any_of(windows_.begin(), windows_.end(), [&](const ManagedWindow &other) {
        return window.facts->transientForGroup ? !other.facts->isTransient()
                                               : other.address.window == window.facts->transientFor;
    });
}

bool ApplicationWindows::minimizeAll() {
    states_.clear();
    focused_.reset();
    if (const auto active = std::ranges::find(windows_, true, &ManagedWindow::active);
        active != windows_.end())
        tracker_->focusOrder().asked(active->address, false);
    bool sent = !windows_.empty();
    // The back-most first: the focus does not wander over those that go as well.
    for (auto window = windows_.rbegin(); window != windows_.rend(); ++window)
        if (!isOwnersBusiness(*window))
            sent = tracker_->windowSystem().minimize(window->address) && sent;
    return sent;
}

bool ApplicationWindows::activate() {
    if (main_ && focused_ == main_)
        return true;
    const std::vector<std::size_t> list = listed();
    if (list.empty())
        return false;
    // Those that no task bar shows went with the others, and come with them.
    for (std::size_t i = 0; i < windows_.size(); ++i)
        if (states_[i].exists && states_[i].minimized && !windows_[i].facts->isTransient() &&
            std::find(list.begin(), list.end(), i) == list.end())
            tracker_->windowSystem().restore(windows_[i].address, freshTime());
    return focus(main_.value_or(list.front()));
}

}  // namespace kestrelbay::x11
