#pragma once

#include <QObject>

#include <memory>
#include <optional>

#include "app/QtTexts.h"
#include "app/RuleFileFollower.h"
#include "app/RuleRunner.h"
#include "app/UnseenWindows.h"
#include "app/WindowRest.h"
#include "app/instance/ApplicationService.h"
#include "app/status/StatusMenu.h"
#include "app/toasts/ToastPanel.h"
#include "hotkeys/ShortcutManager.h"
#include "launcher/AppLauncher.h"
#include "preferences/PreferencesServices.h"
#include "settings/LaunchAtLogin.h"
#include "settings/Notifications.h"
#include "tasks/DispatchQueue.h"
#include "tasks/Timers.h"
#include "ui/look/Appearance.h"

namespace kestrelbay {

class AboutWindowController;
class OnboardingWindowController;
class Platform;
class PreferencesWindowController;
class StatusItem;

/// The running program: brings its parts up in order and holds them until the end.
/// Main thread.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// The rules and the tap of the running program. To be made before the application object,
    /// so that hotkeys are in place before all that only windows need.
    [[nodiscard]] static std::unique_ptr<ShortcutManager> makeManager(
        Platform &platform, ShortcutManager::Hooks hooks = {});

    /// The platform, which the manager was made with, and the timers have to outlive it.
    /// `isStyleNamed`: the user has named a style of Qt.
    AppDelegate(Platform &platform, Timers &timers, std::unique_ptr<ShortcutManager> manager,
                bool isStyleNamed);
    ~AppDelegate() override;

    /// Makes the program reachable for others of this session. False when another
    /// instance is reachable already, and where there is no session bus.
    [[nodiscard]] bool registerOnSessionBus();

    void applicationDidFinishLaunching();

    /// One of those that the session bus offers; nothing for an unknown name.
    void performAction(const QString &name) const;
    /// As ShortcutManager::runRule(), what is launched with Workspace::setActivationToken().
    /// False also for a text that is no id.
    bool runRule(const QString &id, const QString &activationToken);

    /// ShortcutManager::importRules() for a text of the form of the rule file. False when it is
    /// none, or could not be saved.
    bool importRules(const QString &rules);

    // What the status menu and the session bus offer:
    void toggleAllShortcuts();
    void openPreferences();
    /// The guide from its start, also at the next start if it is not finished then.
    void openOnboarding();
    void showAbout();

    [[nodiscard]] Notifications &notifications() { return notifications_; }
    [[nodiscard]] ShortcutManager &shortcutManager() { return *manager_; }
    [[nodiscard]] const StatusMenu &statusMenu() const { return menu_; }
    /// Null while it is not there.
    [[nodiscard]] OnboardingWindowController *onboarding() { return onboarding_.get(); }
    [[nodiscard]] PreferencesWindowController *preferences() { return preferences_.get(); }
    [[nodiscard]] bool isPollingAccessibility() const { return accessibilityPoller_ != nullptr; }

protected:
    /// Quits by itself when the system asks for it, see quit().
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] RuleRunner::Services ruleRunnerServices();
    [[nodiscard]] PreferencesServices preferencesServices();
    [[nodiscard]] ApplicationService::Actions serviceActions();
    [[nodiscard]] ShortcutManager::Hooks managerHooks();
    void prepareForRules() const;
    void startAccessibilityPolling();
    void pollAccessibility();
    void observeNotifications();
    void showOnboarding();
    PreferencesWindowController &preferencesWindow();
    void giveUpClosedWindows();

    Platform &platform_;
    Timers &timers_;
    Notifications notifications_;
    const Appearance appearance_;
    SteadyClock clock_;
    MainQueue mainQueue_;
    ThreadPoolQueue launchQueue_;
    ThreadPoolQueue backgroundQueue_;
    const ToastPanel::Services toastServices_;
    AppLauncher launcher_;
    UnseenWindows unseenWindows_;
    RuleRunner ruleRunner_;
    LaunchAtLogin launchAtLogin_;
    std::unique_ptr<ShortcutManager> manager_;
    std::unique_ptr<RuleFileFollower> ruleFileFollower_;
    std::unique_ptr<Timers::Timer> accessibilityPoller_;
    std::optional<QtTexts> qtTexts_;
    StatusMenu menu_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<PreferencesWindowController> preferences_;
    std::unique_ptr<OnboardingWindowController> onboarding_;
    std::unique_ptr<AboutWindowController> about_;
    const WindowRest windowRest_{timers_, [this] { giveUpClosedWindows(); }};
    ApplicationService service_;
};

}  // namespace kestrelbay
