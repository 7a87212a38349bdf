#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include <QString>

#include "platform/linux/applications/matching/ApplicationMatch.h"
#include "platform/linux/glib/BackgroundLoop.h"

namespace kestrelbay::wayland {

/// A window as a compositor tells of it.
struct DesktopWindow {
    /// From 1 on; as long as the desktop is asked it is never another one's.
    std::int64_t id = 0;
    /// As far as the compositor tells: without `process`. What a Wayland window is called by stands
    /// where X has two names.
    WindowFacts facts;
    QString title;
    bool isFocused = false;
    bool isUrgent = false;
    /// Minimised, or wherever else the compositor puts windows that are not to be in view.
    bool isHidden = false;
};

/// An answer to what was asked so long ago is still of this moment.
inline constexpr std::chrono::milliseconds kSameMoment{50};

/// Between two looks at the events that have come, as long as a window is awaited that a launch
/// brings.
inline constexpr std::chrono::milliseconds kBetweenAwaitedEvents{250};

/// The windows of a compositor, and what it can be asked to do with them. Any thread, several at a
/// time, but for listen(). A compositor that does not answer holds nobody up for longer than a
/// second.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// What a desktop needs to hear its compositor's news.
    struct News {
        /// Has ended when the desktop is destroyed.
        BackgroundLoop &loop;
        /// Is there somebody who waits for a new window? Any thread.
        std::function<bool()> isWindowAwaited;
        /// There may be one, or other windows than were read last. On the loop's thread.
        std::function<void()> windowsChanged;
    };
    /// Once, before anything else.
    virtual void listen(News news) = 0;

    /// The windows as they are, the last used one first. When the compositor does not answer, none,
    /// or as they were last.
    [[nodiscard]] virtual std::vector<DesktopWindow> read() = 0;
    /// The same without asking, where the compositor has told of all that was before the press that
    /// is carried out. Only in this it may be wrong: the window that had the focus may have lost
    /// it, to something else than another window. None where that much is not known.
    [[nodiscard]] virtual std::optional<std::vector<DesktopWindow>> known() { return std::nullopt; }
    /// Asks that of the compositor for the next readAsked(), without waiting for the answer.
    virtual void askAhead() = 0;
    /// The windows as they were at askAhead(), if that was a moment ago; otherwise read().
    [[nodiscard]] virtual std::vector<DesktopWindow> readAsked() = 0;

    // Requests, by the windows' numbers: false when the compositor could not be asked.
    /// Puts windows out of view, or does the nearest to it that the compositor can.
    virtual bool hide(std::span<const std::int64_t> windows) = 0;
    /// Brings back those that are hidden, in their order, to where they were as far as that is
    /// known, and gives one of any window the focus, on whatever workspace that is.
    virtual bool bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) = 0;

protected:
    Desktop() = default;
    Desktop(const Desktop &) = default;
    Desktop &operator=(const Desktop &) = default;
};

}  // namespace kestrelbay::wayland
