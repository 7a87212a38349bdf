#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// The states of those windows that somebody has asked for, as long as the server tells of no
/// change. Whose state has changed can so be asked for before anybody wants it again. Any one
/// thread at a time.
class WindowStates {
public:
    /// Windows whose states are being asked for.
    struct Asking {
        std::uint64_t number = 0;
        std::vector<WindowAddress> windows;
    };

    /// Of these windows, which have to be such that the server tells of their changes.
    [[nodiscard]] Asking want(std::span<const WindowAddress> windows);
    /// Of those wanted before whose states are not known.
    [[nodiscard]] Asking askUnknown();
    /// The answers, in the order of the windows. To be called when all events that came before
    /// them have been taken in: what has changed since it was asked for is not kept.
    void keep(const Asking &asking, std::span<const WindowState> states);

    [[nodiscard]] std::optional<WindowState> of(xcb_window_t window) const;

    void windowChanged(xcb_window_t window);
    void allChanged();
    /// Another window manager may mean something else by the same properties.
    void forgetAll() { wanted_.clear(); }
    void windowGone(xcb_window_t window) { wanted_.erase(window); }

private:
    struct Wanted {
        WindowAddress address;
        /// The newest since the last change; 0 for none.
        std::uint64_t asking = 0;
        std::optional<WindowState> state;
    };

    std::unordered_map<xcb_window_t, Wanted> wanted_;
    std::uint64_t askings_ = 0;
};

}  // namespace kestrelbay::x11
