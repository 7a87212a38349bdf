#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>

#include "platform/linux/x11/windows/ApplicationWindows.h"

namespace kestrelbay::x11 {

/// What a window shows of something new in it.
struct WindowLook {
    xcb_window_t window = XCB_NONE;
    QByteArray title;
    bool wantsAttention = false;
};

/// An application as it shows itself.
struct ApplicationLook {
    /// Front-most first.
    std::vector<WindowLook> windows;
    /// The active window, whosever it is; XCB_NONE when there is none, or it is not known.
    xcb_window_t active = XCB_NONE;
};

/// The window in which something has happened since: it became active, is new, wants attention
/// or has another title.
[[nodiscard]] std::optional<xcb_window_t> changedWindow(const ApplicationLook &before,
                                                        const ApplicationLook &now);

/// Has a window of another application become active since?
[[nodiscard]] bool isElsewhere(const ApplicationLook &before, const ApplicationLook &now);

/// A running application that has been given a file. Not every one comes forward with it, and a
/// window manager may refuse one that tries. Any one thread at a time.
class OpenedFile {
public:
    /// The picture shows how things were before the application had the file.
    OpenedFile(std::shared_ptr<WindowTracker> tracker, QString entryPath,
               const DesktopPicture &before);

    /// A file is not opened in what has no windows; what is launched comes forward by itself.
    [[nodiscard]] bool wasRunning() const { return !before_.windows.empty(); }

    /// Brings forward the window in which something has happened since, and as a last resort the
    /// front-most one. True when there is nothing more to do, because it did so or because the
    /// user has gone elsewhere.
    [[nodiscard]] bool bringForward(const DesktopPicture &now, bool isLastResort);

private:
    [[nodiscard]] std::optional<ApplicationWindows> windowsIn(const DesktopPicture &picture) const;
    [[nodiscard]] ApplicationLook lookAt(const DesktopPicture &picture) const;

    const std::shared_ptr<WindowTracker> tracker_;
    const QString entryPath_;
    const ApplicationLook before_;
};

}  // namespace kestrelbay::x11
