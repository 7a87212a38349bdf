#pragma once

#include <functional>
#include <memory>

#include <QObject>

namespace kestrelbay {

class FixedWindow;
class NativeWindow;
class OnboardingViewController;
class ShortcutManager;
class SystemSettings;
class Timers;
class UserDefaults;

/// The window of the first-run guide. Each begins at the first step. Main thread.
class OnboardingWindowController final : public QObject {
    Q_OBJECT

public:
    /// All of it has to outlive this.
    struct Services {
        ShortcutManager &manager;
        UserDefaults &defaults;
        SystemSettings &systemSettings;
        NativeWindow &nativeWindow;
        Timers &timers;
        /// A notice that outlives the guide.
        std::function<void(const QString &)> showToast;
    };

    /// The window is not in view yet.
    explicit OnboardingWindowController(Services services);
    ~OnboardingWindowController() override;

    /// Called when the guide ends with the question answered whether to open the
    /// preferences, closing its window being a no. It may delete this. Not called
    /// where the user leaves by a link, which ends with a notice instead.
    void setOnFinished(std::function<void(bool openPreferences)> onFinished);

    /// Before all other windows, those of other programs included.
    void showWindow();

    [[nodiscard]] QWidget *window() const;
    [[nodiscard]] OnboardingViewController &viewController() const { return *viewController_; }

private:
    void windowShouldClose();
    void finish(bool openPreferences);

    Services services_;
    std::function<void(bool)> onFinished_;
    std::unique_ptr<FixedWindow> window_;
    std::unique_ptr<OnboardingViewController> viewController_;
    bool isFinishing_ = false;
};

}  // namespace kestrelbay
