#pragma once

#include <memory>
#include <optional>

#include <QString>

#include "platform/linux/applications/matching/ApplicationLook.h"
#include "platform/linux/x11/windows/ApplicationWindows.h"

namespace kestrelbay::x11 {

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
