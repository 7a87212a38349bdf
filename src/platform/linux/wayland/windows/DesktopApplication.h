#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <QString>
#include <QUrl>

#include "platform/RunningApplication.h"
#include "platform/linux/applications/matching/ApplicationGroups.h"
#include "platform/linux/wayland/windows/Desktop.h"
#include "platform/linux/wayland/windows/WindowMatches.h"

namespace kestrelbay::wayland {

/// The windows of a picture by applications. A group numbers them as the picture has them.
[[nodiscard]] std::vector<ApplicationGroup> groupApplications(const Picture &picture);

/// The windows that a picture shows of one application, and what was asked of them since. Shared
/// by a running application and its window elements. Any one thread at a time.
///
/// Windows that are to come back come together with the focus, in one request.
class ApplicationWindows {
public:
    ApplicationWindows(std::shared_ptr<Desktop> desktop, const Picture &picture,
                       const ApplicationGroup &group);
    ~ApplicationWindows();
    ApplicationWindows(const ApplicationWindows &) = delete;
    ApplicationWindows &operator=(const ApplicationWindows &) = delete;

    [[nodiscard]] const std::vector<KnownWindow> &all() const { return windows_; }
    /// The windows to switch to, front-most first, as positions for the calls below.
    [[nodiscard]] std::vector<std::size_t> listed() const;
    [[nodiscard]] bool isHidden(std::size_t window) const {
        return windows_[window].window.isHidden;
    }

    bool setHidden(std::size_t window, bool hidden);
    void setMain(std::size_t window) { main_ = window; }
    bool focus(std::size_t window);
    bool hideAll();
    /// Brings the main window forward, unless that was asked for already.
    bool activate();

private:
    const std::shared_ptr<Desktop> desktop_;
    /// Without desktops, panels and the like.
    std::vector<KnownWindow> windows_;
    /// Asked to come back.
    std::set<std::size_t> returning_;
    std::optional<std::size_t> main_;
    std::optional<std::size_t> focused_;
};

/// An application with windows on a desktop.
class DesktopApplication final : public RunningApplication {
public:
    DesktopApplication(const std::shared_ptr<Desktop> &desktop, const Picture &picture,
                       const ApplicationGroup &group);

    [[nodiscard]] QUrl bundleURL() const override { return bundleURL_; }
    [[nodiscard]] QString bundleIdentifier() const override { return bundleIdentifier_; }
    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return process_; }
    [[nodiscard]] bool isActive() const override { return isActive_; }
    /// As under X11, dialogs and tool palettes are left out as long as there are others.
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override;
    bool hide() override { return windows_->hideAll(); }
    bool activate() override { return windows_->activate(); }

private:
    const std::shared_ptr<ApplicationWindows> windows_;
    const ProcessIdentifier process_;
    const bool isActive_;
    QUrl bundleURL_;
    QString bundleIdentifier_;
};

}  // namespace kestrelbay::wayland
