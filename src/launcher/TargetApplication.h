#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/RunningApplication.h"

namespace kestrelbay {

class Workspace;

/// The running application of one press of a hotkey. Safe to use from any one
/// thread at a time; calls may block until the application answers.
class TargetApplication {
public:
    using Windows = std::vector<std::unique_ptr<WindowElement>>;

    TargetApplication(std::unique_ptr<RunningApplication> application, Workspace &workspace)
        : application_(std::move(application)), workspace_(workspace) {}

    [[nodiscard]] bool isActive() const { return application_->isActive(); }
    void hide() { application_->hide(); }
    void activate() { application_->activate(ActivationOption::IgnoringOtherApps); }

    /// Asked for at most once, since finding it may be slow.
    [[nodiscard]] bool isFileManager();

    /// All windows, front-most first.
    [[nodiscard]] Windows windows() const;

    /// Those of them that count: all, but of the file manager only ordinary windows,
    /// since the desktop is a window of it too.
    [[nodiscard]] std::vector<WindowElement *> standardWindows(const Windows &windows);

    /// Brings the back-most of at least two windows forward. Repeated presses so
    /// walk through all of them.
    void cycle(const std::vector<WindowElement *> &standardWindows);

private:
    std::unique_ptr<RunningApplication> application_;
    Workspace &workspace_;
    std::optional<bool> isFileManager_;
};

/// Brings back every window that is known to be minimised.
void restoreMinimized(const TargetApplication::Windows &windows);

}  // namespace kestrelbay
