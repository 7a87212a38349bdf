#pragma once

#include <array>
#include <bit>
#include <initializer_list>

#include "platform/linux/apps/windows.h"

namespace kestrelbay::testing {

inline QByteArray bytesOf(std::initializer_list<std::uint32_t> words) {
    QByteArray bytes;
    for (const std::uint32_t word : words)
        bytes.append(std::bit_cast<std::array<char, 4>>(word).data(), sizeof word);
    return bytes;
}

/// The test is the window manager itself.
class OwnManager : public LinuxWorkspaceWindows {
protected:
    /// NormalState and IconicState of ICCCM 4.1.3.1.
    static constexpr std::uint32_t kNormal = 1, kMinimised = 3;

    [[nodiscard]] xcb_window_t root() const { return maker_->connection().root(); }

    /// The last of them is in front and active.
    void manage(std::initializer_list<xcb_window_t> windows) {
        announce(maker_->make({.unmapped = true}));
        for (const xcb_window_t window : windows)
            setState(window, kNormal);
        setWindows(root(), "_NET_CLIENT_LIST_STACKING", windows);
        makeActive(std::data(windows)[windows.size() - 1]);
    }
    /// By a window that says the same of itself.
    void announce(xcb_window_t check) {
        for (const xcb_window_t announced : {check, root()})
            setWindows(announced, "_NET_SUPPORTING_WM_CHECK", {check});
    }
    void setState(xcb_window_t window, std::uint32_t state) {
        maker_->setRaw(window, "WM_STATE", "WM_STATE", 32, bytesOf({state, XCB_NONE}));
    }
    void makeActive(xcb_window_t window) { setWindows(root(), "_NET_ACTIVE_WINDOW", {window}); }
    void setWindows(xcb_window_t window, const char *property,
                    std::initializer_list<xcb_window_t> windows) {
        maker_->setRaw(window, property, "WINDOW", 32, bytesOf(windows));
    }
};

}  // namespace kestrelbay::testing
