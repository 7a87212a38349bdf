#pragma once

#include <atomic>
#include <functional>
#include <utility>
#include <vector>

#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeHotkeyHolders.h"
#include "fakes/FakeKeyboardLayout.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeScreenLock.h"
#include "fakes/FakeSystemLog.h"
#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeSystemSymbols.h"
#include "fakes/FakeSystemTints.h"
#include "fakes/FakeSystemTray.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "platform/Platform.h"

namespace kestrelbay {

/// All fakes in one hand.
class FakePlatform final : public Platform {
public:
    [[nodiscard]] FakeEventTap &eventTap() override { return eventTap_; }
    [[nodiscard]] FakeWorkspace &workspace() override { return workspace_; }
    [[nodiscard]] FakeApplicationCatalog &applicationCatalog() override { return catalog_; }
    [[nodiscard]] FakeUserDefaults &userDefaults() override { return defaults_; }
    [[nodiscard]] FakeSystemSounds &systemSounds() override { return sounds_; }
    [[nodiscard]] FakeSystemLog &systemLog() override { return log_; }
    [[nodiscard]] FakeLoginItem &loginItem() override { return loginItem_; }
    [[nodiscard]] FakeSystemSettings &systemSettings() override { return systemSettings_; }
    [[nodiscard]] FakeNativeWindow &nativeWindow() override { return nativeWindow_; }
    [[nodiscard]] FakeSystemTray &systemTray() override { return systemTray_; }
    [[nodiscard]] FakeScreenLock &screenLock() override { return screenLock_; }
    [[nodiscard]] FakeHotkeyHolders &hotkeyHolders() override { return hotkeyHolders_; }
    [[nodiscard]] FakeKeyboardLayout &keyboardLayout() override { return keyboardLayout_; }
    [[nodiscard]] FakeSystemSymbols *systemSymbols() override { return &systemSymbols_; }
    [[nodiscard]] FakeSystemTints *systemTints() override { return &systemTints_; }
    [[nodiscard]] SystemAlerts *systemAlerts() override { return systemAlerts_; }
    [[nodiscard]] DesktopExtension *desktopExtension() override { return nullptr; }
    [[nodiscard]] QString applicationSupportDirectory() const override { return supportDirectory_; }
    void becomeAccessory() override { isAccessory_ = true; }
    void hurryThisThread() override { ++hurriedThreads_; }
    void giveBackMemory() override { ++memoryReturns_; }
    [[nodiscard]] std::vector<std::pair<QString, QString>> diagnostics() override {
        return diagnostics_;
    }
    void setSessionEndedHandler(std::function<void()> handler) override {
        sessionEnded_ = std::move(handler);
    }
    void setReopenHandler(std::function<void()> handler) override { reopen_ = std::move(handler); }
    [[nodiscard]] QString startupProblem() const override { return startupProblem_; }
    [[nodiscard]] QString qtPlatform() const override { return {}; }

    // For the test:
    void setSystemAlerts(SystemAlerts *alerts) { systemAlerts_ = alerts; }
    void setApplicationSupportDirectory(const QString &path) { supportDirectory_ = path; }
    [[nodiscard]] bool isAccessory() const { return isAccessory_; }
    /// How often a thread was told to.
    [[nodiscard]] int hurriedThreads() const { return hurriedThreads_; }
    /// How often memory was given back.
    [[nodiscard]] int memoryReturns() const { return memoryReturns_; }
    void setDiagnostics(std::vector<std::pair<QString, QString>> diagnostics) {
        diagnostics_ = std::move(diagnostics);
    }
    void endSession() {
        if (const auto handler = std::exchange(sessionEnded_, nullptr))
            handler();
    }
    void reopen() const {
        if (reopen_)
            reopen_();
    }
    void setStartupProblem(const QString &problem) { startupProblem_ = problem; }

private:
    FakeEventTap eventTap_;
    FakeWorkspace workspace_;
    FakeApplicationCatalog catalog_;
    FakeUserDefaults defaults_;
    FakeSystemSounds sounds_;
    FakeSystemLog log_;
    FakeLoginItem loginItem_;
    FakeSystemSettings systemSettings_;
    FakeSystemSymbols systemSymbols_;
    FakeSystemTints systemTints_;
    SystemAlerts *systemAlerts_ = nullptr;
    FakeNativeWindow nativeWindow_;
    FakeSystemTray systemTray_;
    FakeScreenLock screenLock_;
    FakeHotkeyHolders hotkeyHolders_;
    FakeKeyboardLayout keyboardLayout_;
    bool isAccessory_ = false;
    std::atomic<int> hurriedThreads_ = 0;
    int memoryReturns_ = 0;
    std::vector<std::pair<QString, QString>> diagnostics_;
    std::function<void()> sessionEnded_;
    std::function<void()> reopen_;
    QString supportDirectory_;
    QString startupProblem_;
};

}  // namespace kestrelbay
