#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "platform/Platform.h"

namespace kestrelbay {

namespace x11 {
class GrabFocusFilter;
}

class AutostartLoginItem;
class LinuxStatusArea;
class PortalSystemSettings;
class SessionBus;

/// The services of an X11 session. Each is made when it is first asked for, so
/// that asking for the start-up problem needs none of them.
class LinuxPlatform final : public Platform {
public:
    LinuxPlatform();
    ~LinuxPlatform() override;

    [[nodiscard]] EventTap &eventTap() override;
    [[nodiscard]] Workspace &workspace() override;
    [[nodiscard]] ApplicationCatalog &applicationCatalog() override;
    [[nodiscard]] UserDefaults &userDefaults() override;
    [[nodiscard]] SystemSounds &systemSounds() override;
    [[nodiscard]] SystemLog &systemLog() override;
    [[nodiscard]] LoginItem &loginItem() override;
    [[nodiscard]] SystemSettings &systemSettings() override;
    [[nodiscard]] NativeWindow &nativeWindow() override;
    [[nodiscard]] StatusArea &statusArea() override;
    /// None: icon themes have other names and shapes.
    [[nodiscard]] const SystemSymbols *systemSymbols() override { return nullptr; }
    /// $XDG_CONFIG_HOME.
    [[nodiscard]] QString applicationSupportDirectory() const override;
    /// Nothing to do: a task bar shows windows, not programs, and no menu bar is shared.
    void becomeAccessory() override {}
    /// Takes up to a few tenths of a second when services do not answer.
    [[nodiscard]] std::vector<std::pair<QString, QString>> diagnostics() override;
    void setSessionEndedHandler(std::function<void()> handler) override;
    /// A reachable X server, Xwayland's included.
    [[nodiscard]] QString startupProblem() const override;

private:
    [[nodiscard]] SessionBus &bus();
    [[nodiscard]] PortalSystemSettings &portalSettings();
    [[nodiscard]] LinuxStatusArea &linuxStatusArea();

    const QString displayName_;
    std::function<void()> sessionEnded_;
    std::unique_ptr<SystemLog> log_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<SystemSounds> sounds_;
    std::unique_ptr<ApplicationCatalog> catalog_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<x11::GrabFocusFilter> grabFocusFilter_;
    std::unique_ptr<EventTap> tap_;
    std::unique_ptr<AutostartLoginItem> loginItem_;
    std::unique_ptr<NativeWindow> nativeWindow_;
    std::unique_ptr<SessionBus> bus_;
    std::unique_ptr<PortalSystemSettings> systemSettings_;
    std::unique_ptr<LinuxStatusArea> statusArea_;
};

}  // namespace kestrelbay
