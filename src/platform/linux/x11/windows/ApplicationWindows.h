#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "platform/linux/applications/matching/ApplicationGroups.h"
#include "platform/linux/x11/windows/WindowTracker.h"

namespace kestrelbay::x11 {

/// The windows of a picture by applications. A group numbers them as the picture has them.
[[nodiscard]] std::vector<ApplicationGroup> groupApplications(const DesktopPicture &picture);

/// The windows that a picture shows of one application, and what was asked of them
/// since. Shared by a running application and its window elements. Any one thread at a
/// time.
///
/// One key press asks for the same states several times. They are read together,
/// and again only when something was asked of the windows or a press must be over.
///
/// Windows that are to come back come together, the front-most last, so that they have
/// their order again: when one of them is brought forward or asked about, at the latest when
/// this object goes.
class ApplicationWindows {
public:
    ApplicationWindows(std::shared_ptr<WindowTracker> tracker, const DesktopPicture &picture,
                       const ApplicationGroup &group);
    ~ApplicationWindows();
    ApplicationWindows(const ApplicationWindows &) = delete;
    ApplicationWindows &operator=(const ApplicationWindows &) = delete;

    /// Of all windows, front-most first.
    [[nodiscard]] std::vector<WindowAddress> addresses() const;

    /// The windows to switch to, front-most first, as positions for the calls below.
    [[nodiscard]] std::vector<std::size_t> listed();

    /// Are all windows to switch to minimised, or the active one? Window managers name it as
    /// that for a moment longer, and some leave dialogs behind.
    [[nodiscard]] bool areMinimized();

    /// No value when the window has gone.
    [[nodiscard]] std::optional<WindowState> state(std::size_t window);
    [[nodiscard]] WindowType type(std::size_t window) const { return windows_[window].facts->type; }

    bool setMinimized(std::size_t window, bool minimized);
    bool raise(std::size_t window);
    void setMain(std::size_t window) { main_ = window; }
    /// Brings this window forward with the keyboard focus.
    bool focus(std::size_t window);

    /// What the window manager does not minimise stays, but another application gets the
    /// focus. Waits for the window manager, half a second at most.
    bool minimizeAll();
    /// Brings the main window forward, unless that was asked for already.
    bool activate();

private:
    /// A press is over long before; a test or a slow press sees fresh states.
    static constexpr std::chrono::milliseconds kStatesLast{100};
    /// Window managers answer within a few milliseconds, busy ones within tens.
    static constexpr std::chrono::milliseconds kManagerAnswers{250};
    static constexpr std::chrono::milliseconds kBetweenLooks{5};

    [[nodiscard]] xcb_timestamp_t freshTime();
    void askTime();
    void readStates();
    void restoreAsked();
    [[nodiscard]] bool isOwnersBusiness(const ManagedWindow &window) const;
    /// Returns when the window manager has minimised them all, or has had time to.
    void minimizeAndWait(const std::vector<std::size_t> &windows);
    void focusAnother() const;

    const std::shared_ptr<WindowTracker> tracker_;
    const std::shared_ptr<const ApplicationIndex> index_;
    /// The server's, and ours when it was asked.
    xcb_timestamp_t time_;
    std::chrono::steady_clock::time_point timeAskedAt_;
    /// Without desktops, panels and the like.
    std::vector<ManagedWindow> windows_;

    std::vector<WindowState> states_;
    std::chrono::steady_clock::time_point readAt_;
    /// Asked to come back.
    std::set<std::size_t> returning_;
    /// Those of them for which the window manager has been asked; some are active for a moment.
    std::vector<WindowAddress> restored_;
    std::optional<std::size_t> main_;
    std::optional<std::size_t> focused_;
};

}  // namespace kestrelbay::x11
