#pragma once

#include <memory>
#include <vector>

#include "platform/RunningApplication.h"
#include "platform/linux/x11/windows/ApplicationGroups.h"
#include "platform/linux/x11/windows/WindowMirror.h"

namespace kestrelbay::x11 {

/// What windows on other machines have for a process: above every number that the
/// kernel gives, and never to be signalled.
inline constexpr ProcessIdentifier kRemoteProcess{0x7fff'ffff};

class ApplicationWindows;

class LinuxRunningApplication : public RunningApplication {
public:
    LinuxRunningApplication(std::shared_ptr<WindowMirror> mirror, const DesktopPicture &picture,
                            const ApplicationGroup &group);
    ~LinuxRunningApplication() override;

    [[nodiscard]] QUrl bundleURL() const override { return bundleURL_; }
    [[nodiscard]] QString bundleIdentifier() const override { return bundleIdentifier_; }
    [[nodiscard]] ProcessIdentifier processIdentifier() const override { return pid_; }
    [[nodiscard]] bool isActive() const override;
    /// Tool palettes, dialogs and windows that keep out of task bars are left out
    /// as long as there are others; desktops, panels and the like always.
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override;

    bool hide() override;
    bool activate(ActivationOption option) override;

private:
    QUrl bundleURL_;
    QString bundleIdentifier_;
    ProcessIdentifier pid_;
    bool active_;
    std::shared_ptr<ApplicationWindows> windows_;
};

}  // namespace kestrelbay::x11
