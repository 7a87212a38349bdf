#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

#include "app/ApplicationService.h"
#include "app/MainQueue.h"
#include "app/RuleRunner.h"
#include "app/SteadyClock.h"
#include "app/ThreadPoolQueue.h"
#include "hotkeys/ShortcutManager.h"
#include "launcher/AppLauncher.h"

namespace kestrelbay {

class Platform;

/// The running program: brings its parts up in order and holds them until the end.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// The platform has to outlive it.
    explicit AppDelegate(Platform &platform);
    ~AppDelegate() override;

    /// Makes the program reachable for others of this session. False when another
    /// instance is reachable already, and where there is no session bus.
    [[nodiscard]] bool registerOnSessionBus();

    void applicationDidFinishLaunching();

    /// One of those that the session bus offers; nothing for an unknown name.
    void performAction(const QString &name);

    [[nodiscard]] ShortcutManager &shortcutManager() { return *manager_; }

private:
    void toggleAllShortcuts();
    void startAccessibilityPolling();

    Platform &platform_;
    SteadyClock clock_;
    MainQueue mainQueue_;
    ThreadPoolQueue launchQueue_;
    AppLauncher launcher_;
    RuleRunner ruleRunner_;
    std::unique_ptr<ShortcutManager> manager_;
    QTimer accessibilityPoller_;
    ApplicationService service_;
};

}  // namespace kestrelbay
