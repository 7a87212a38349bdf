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

    void applicationDidFinishLaunching();

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
