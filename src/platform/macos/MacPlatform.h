#pragma once

#include <memory>

#include "platform/Platform.h"

namespace kestrelbay {

/// The services of macOS. Each is made when it is first asked for.
class MacPlatform final : public Platform {
public:
    MacPlatform();
    ~MacPlatform() override;

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
    [[nodiscard]] const SystemSymbols *systemSymbols() override;
    /// The user's Library/Application Support.
    [[nodiscard]] QString applicationSupportDirectory() const override;
    void becomeAccessory() override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> diagnostics() override;
    /// Never called: a program ends with the session, which ends it.
    void setSessionEndedHandler(std::function<void()> /*handler*/) override {}
    /// Always empty.
    [[nodiscard]] QString startupProblem() const override { return {}; }

private:
    std::unique_ptr<EventTap> tap_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<ApplicationCatalog> catalog_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<SystemSounds> sounds_;
    std::unique_ptr<SystemLog> log_;
    std::unique_ptr<LoginItem> loginItem_;
    std::unique_ptr<SystemSettings> systemSettings_;
    std::unique_ptr<NativeWindow> nativeWindow_;
    std::unique_ptr<StatusArea> statusArea_;
    std::unique_ptr<SystemSymbols> systemSymbols_;
};

}  // namespace kestrelbay
