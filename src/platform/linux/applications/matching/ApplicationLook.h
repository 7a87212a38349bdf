#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>

namespace kestrelbay {

/// What a window shows of something new in it.
struct WindowLook {
    /// As the desktop numbers it, from 1 on.
    std::int64_t window = 0;
    QByteArray title;
    bool wantsAttention = false;
};

/// An application as it shows itself.
struct ApplicationLook {
    /// Front-most first.
    std::vector<WindowLook> windows;
    /// The active window, whosever it is; 0 when there is none, or it is not known.
    std::int64_t active = 0;
};

/// The window in which something has happened since: it became active, is new, wants attention
/// or has another title.
[[nodiscard]] std::optional<std::int64_t> changedWindow(const ApplicationLook &before,
                                                        const ApplicationLook &now);

/// Has a window of another application become active since?
[[nodiscard]] bool isElsewhere(const ApplicationLook &before, const ApplicationLook &now);

}  // namespace kestrelbay
