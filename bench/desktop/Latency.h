#pragma once

#include <vector>

#include "Contender.h"
#include "Samples.h"
#include "support/KeyPresser.h"

namespace kestrelbay::bench {

/// Presses hotkeys and takes the time until the window manager names the target as
/// the active window.
class Latency {
public:
    /// The target is what every contender brings forward; before each press the
    /// other window is the active one.
    Latency(desktop::Desktop &desktop, xcb_window_t target, xcb_window_t other);

    /// So many trials of each contender, by turns. Throws std::runtime_error when
    /// one of them does not bring the target forward.
    [[nodiscard]] std::vector<Samples> run(std::vector<Contender> &contenders, int trials);

private:
    [[nodiscard]] double trial(Contender &contender);
    /// Waits for the next change of the active window; false when there is none.
    [[nodiscard]] bool waitForChange(std::chrono::milliseconds timeout);
    void waitUntilQuiet();
    [[nodiscard]] xcb_window_t active();

    desktop::Desktop &desktop_;
    xcb_window_t target_;
    xcb_window_t other_;
    desktop::XClient watch_;
    testing::KeyPresser keyboard_;
};

}  // namespace kestrelbay::bench
