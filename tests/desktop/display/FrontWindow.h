#pragma once

#include <cstdint>
#include <vector>

#include <QString>

#include "desktop/display/FrontProgram.h"
#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// It remembers every key event and click that reached it.
class FrontWindow : public FrontProgram {
public:
    struct Key {
        std::uint8_t keycode;
        std::uint16_t state;
        bool pressed;
    };
    static constexpr const char *kClass = "KestrelFront";

    explicit FrontWindow(const QString &displayName);

    [[nodiscard]] xcb_window_t id() override { return window_; }
    /// Repeats included.
    [[nodiscard]] int pressesOf(std::uint8_t keycode) override;
    /// Clicks that reached the window since forget().
    [[nodiscard]] int clicks();
    void forget() override;
    void setFullScreen(bool fullScreen);

private:
    void readEvents();

    XClient client_;
    xcb_window_t window_;
    std::vector<Key> keys_;
    int clicks_ = 0;
};

}  // namespace kestrelbay::desktop
