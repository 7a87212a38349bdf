#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// Keeps the changes of focus that we ask for apart, so that they take effect in their order,
/// and finds those that a window manager did not listen to.
///
/// Some programs have to take the focus themselves when the window manager tells them to, and
/// do so in their own time, with the time of the server at which they were told. If two are
/// told in the same millisecond, the slower one has the focus in the end.
///
/// Requests and events are known by their numbers on the connection. Any thread.
class FocusOrder {
public:
    using Clock = std::chrono::steady_clock;

    /// Long enough for a window manager on a busy machine, and short enough that a press does
    /// not count as slow for it, which is from half a second on.
    static constexpr std::chrono::milliseconds kLongest{400};
    /// Nothing tells when a request is worked off that changes nothing, such as to give the focus
    /// to the window that has it.
    static constexpr std::chrono::milliseconds kShortest{10};

    explicit FocusOrder(std::function<Clock::time_point()> now = Clock::now)
        : now_(std::move(now)) {}

    /// Sooner after a press people do not decide otherwise.
    static constexpr std::chrono::milliseconds kNobodysChoice{250};

    /// As long as nothing at all happens to the active window, nobody else has decided anything,
    /// and a window manager on a busy machine may have worked nothing off yet.
    static constexpr std::chrono::milliseconds kLongestUnheard{2000};

    using Ask = std::function<bool(const WindowAddress &)>;
    /// Other windows of the application that is to have the focus.
    struct Others {
        /// Have been asked to come back before it, and may have it on the way there.
        std::vector<WindowAddress> onTheWay{};
        /// May have it in the end, as a dialog that the application turns to.
        std::vector<xcb_window_t> own{};
    };

    /// Asks the window manager to give the focus to a window. Requests are sent one at a time, so
    /// that none is repeated after a later one.
    bool give(const WindowAddress &window, Others others, const Ask &ask);
    /// The same for the window that give() was last for, if the active window of its screen has
    /// not been set since: the window manager is late, or has not listened. Did it ask?
    bool repeatUnheard(const Ask &ask);
    /// The window that give() was last for, if the focus has gone elsewhere instead, and so soon
    /// that it may not be anybody's choice: a window manager on a busy machine, late with what
    /// came before, such as a hiding or a window that opened, refuses what is older than that.
    [[nodiscard]] std::optional<WindowAddress> perhapsRefused() const;
    /// Its window manager says that it has. The request then counts as unheard.
    void noteRefusal(const WindowAddress &window);
    /// Those that give() was told to be on the way, as long as nobody has turned elsewhere.
    [[nodiscard]] std::vector<WindowAddress> onTheWay() const;
    /// Asks for what give() asked for last once more, whatever has come of it.
    bool repeat(const Ask &ask);
    /// Is what give() asked for last worth a look by repeatUnheard()? Not when it has come about
    /// and no window is on the way.
    [[nodiscard]] bool mayBeUnheard() const;
    /// The window manager is about to be asked for something that takes the focus from a window.
    void take(const WindowAddress &window);

    /// The window manager has set the active window of a screen, if only to what it was.
    void activeWindowSet(xcb_window_t root, std::uint32_t event);
    /// What the active window was when that request was answered.
    void activeWindowRead(xcb_window_t root, xcb_window_t active, std::uint32_t request);

    /// May what was asked for last still come about? Not when it has, when somebody has decided
    /// otherwise since, or when it was asked more than kLongest ago.
    [[nodiscard]] bool isAwaited() const;

private:
    struct Request {
        WindowAddress window;
        bool toHaveIt = true;
        Others others;
        Clock::time_point when;
        /// The first event of the active window since.
        std::optional<std::uint32_t> set;
        bool isOver = false;
        bool hasComeAbout = false;
        bool isPerhapsRefused = false;
    };

    [[nodiscard]] bool mayBeUnheardLocked() const;
    [[nodiscard]] bool isOnTheWayLocked() const;

    const std::function<Clock::time_point()> now_;
    mutable std::mutex mutex_;
    std::optional<Request> last_;
};

}  // namespace kestrelbay::x11
