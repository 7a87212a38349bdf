#pragma once

#include <cstdint>
#include <vector>

#include <QString>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// A plain program with one window: it stands for whatever the user is working
/// with, and remembers every key event and click that reached it.
class FrontWindow {
public:
    struct Key {
        std::uint8_t keycode;
        std::uint16_t state;
        bool pressed;
    };
    static constexpr const char *kClass = "KestrelFront";

    explicit FrontWindow(const QString &displayName);

    [[nodiscard]] xcb_window_t id() const { return window_; }
    /// Presses of this key that reached the window since forget(), repeats included.
    [[nodiscard]] int pressesOf(std::uint8_t keycode);
    /// Clicks that reached the window since forget().
    [[nodiscard]] int clicks();
    void forget();
    void setFullScreen(bool fullScreen);

private:
    void readEvents();

    XClient client_;
    xcb_window_t window_;
    std::vector<Key> keys_;
    int clicks_ = 0;
};

}  // namespace kestrelbay::desktop
