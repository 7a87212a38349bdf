#include "platform/linux/x11/windows/WindowStates.h"

namespace kestrelbay::x11 {

WindowStates::Asking WindowStates::want(std::span<const WindowAddress> windows) {
    Asking asking{.number = ++askings_, .windows = {windows.begin(), windows.end()}};
    for (const WindowAddress &window : windows)
        wanted_[window.window] = {.address = window, .asking = asking.number, .state = {}};
    return asking;
}

WindowStates::Asking WindowStates::askUnknown() {
    Asking asking{.number = ++askings_, .windows = {}};
    for (auto &[window, wanted] : wanted_) {
        if (wanted.state)
            continue;
        wanted.asking = asking.number;
        asking.windows.push_back(wanted.address);
    }
    return asking;
}

void WindowStates::keep(const Asking &asking, std::span<const WindowState> states) {
    for (std::size_t i = 0; i < states.size(); ++i) {
        const auto wanted = wanted_.find(asking.windows[i].window);
        if (wanted != wanted_.end() && wanted->second.asking == asking.number)
            wanted->second.state = states[i];
    }
}

std::optional<WindowState> WindowStates::of(xcb_window_t window) const {
    const auto wanted = wanted_.find(window);
    return wanted == wanted_.end() ? std::nullopt : wanted->second.state;
}

void WindowStates::windowChanged(xcb_window_t window) {
    const auto wanted = wanted_.find(window);
    if (wanted == wanted_.end())
        return;
    wanted->second.asking = 0;
    wanted->second.state.reset();
}

void WindowStates::allChanged() {
    for (auto &[window, wanted] : wanted_) {
        wanted.asking = 0;
        wanted.state.reset();
    }
}

}  // namespace kestrelbay::x11
