#pragma once

#include <functional>
#include <memory>

#include <QImage>
#include <QString>

#include "settings/SettingsKeys.h"
#include "tasks/Timers.h"
#include "tasks/Turns.h"

namespace kestrelbay {

class AppLauncher;
class ApplicationCatalog;
class DispatchQueue;
class SystemLog;
class SystemSounds;
class UserDefaults;
class Workspace;
struct ShortcutRule;

/// Does what a hotkey that fired asks for: the feedback sound, then the launch,
/// then the flash of the application's icon.
class RuleRunner {
public:
    using ShowLaunchToast = std::function<void(const QImage &, LaunchToastDuration)>;

    /// All have to outlive every piece of work on the two queues, not just the
    /// runner.
    struct Services {
        const AppLauncher &launcher;
        Workspace &workspace;
        const ApplicationCatalog &catalog;
        const UserDefaults &defaults;
        SystemSounds &sounds;
        SystemLog &log;
        const Clock &clock;
        Timers &timers;
        DispatchQueue &mainQueue;
        DispatchQueue &launchQueue;
        /// Called on the main queue, with the application's icon. May be empty.
        ShowLaunchToast showLaunchToast;
        /// Called on the main queue, with the path of an application that was opened while the
        /// desktop keeps windows to itself. May be empty.
        std::function<void(const QString &appPath)> openedUnseen{};
    };

    explicit RuleRunner(Services services);

    /// Only queues the work, with a copy of the rule. Main thread.
    ///
    /// The launches begin in the order of the calls, each when the one before has ended, so that
    /// the last one has the last word on what is in front. None waits for long behind one that
    /// hangs.
    void ruleFired(const ShortcutRule &rule);

private:
    std::shared_ptr<const Services> services_;
    Turns turns_;
    std::unique_ptr<Timers::Timer> sound_;
};

}  // namespace kestrelbay
