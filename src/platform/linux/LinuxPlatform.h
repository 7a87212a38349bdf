#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "platform/Platform.h"

namespace kestrelbay {

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
    /// $XDG_CONFIG_HOME.
    [[nodiscard]] QString applicationSupportDirectory() const override;
    void setSessionEndedHandler(std::function<void()> handler) override;
    /// A reachable X server, Xwayland's included.
    [[nodiscard]] QString startupProblem() const override;

private:
    const QString displayName_;
    std::function<void()> sessionEnded_;
    std::unique_ptr<SystemLog> log_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<SystemSounds> sounds_;
    std::unique_ptr<ApplicationCatalog> catalog_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<EventTap> tap_;
};

}  // namespace kestrelbay
