#pragma once

#include <chrono>
#include <optional>
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

    /// Longer than any contender takes to finish what a press has started, with processors to
    /// spare and with none.
    static constexpr std::chrono::milliseconds kQuiet{15};
    static constexpr std::chrono::milliseconds kQuietUnderLoad{100};

    /// So many trials of each contender, by turns, each after nothing has happened for so long.
    /// A press is lost when the target has not come forward after some seconds. Throws
    /// std::runtime_error when a contender has ended.
    [[nodiscard]] std::vector<Samples> run(std::vector<Contender> &contenders, int trials,
                                           std::chrono::milliseconds quiet = kQuiet);
    /// One trial of one contender, in milliseconds. No value when the press was lost.
    [[nodiscard]] std::optional<double> trial(Contender &contender,
                                              std::chrono::milliseconds quiet = kQuiet);

private:
    /// Waits for the next change of the active window; false when there is none.
    [[nodiscard]] bool waitForChange(std::chrono::milliseconds timeout);
    void waitUntilQuiet(std::chrono::milliseconds quiet);
    [[nodiscard]] xcb_window_t active();

    desktop::Desktop &desktop_;
    xcb_window_t target_;
    xcb_window_t other_;
    desktop::XClient watch_;
    testing::KeyPresser keyboard_;
};

}  // namespace kestrelbay::bench
