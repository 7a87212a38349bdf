#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <QObject>
#include <QPointer>

#include "tasks/Timers.h"

class QAbstractAnimation;
class QPushButton;
class QWidget;

namespace kestrelbay {

class FixedWindow;
struct LTrayText;
class DesktopExtension;
class NativeWindow;
class OnboardingStep;
class ShortcutManager;
class SystemSettings;
class SystemTray;
class TextLabel;
class UserDefaults;

/// The steps of the first-run guide and what their buttons do. Main thread.
class OnboardingViewController final : public QObject {
    Q_OBJECT

public:
    /// All of it has to outlive this.
    struct Services {
        ShortcutManager &manager;
        UserDefaults &defaults;
        SystemSettings &systemSettings;
        /// Null where there is nothing to install.
        DesktopExtension *desktopExtension = nullptr;
        SystemTray &systemTray;
        NativeWindow &nativeWindow;
        Timers &timers;
        /// A notice that outlives the guide.
        std::function<void(const QString &)> showToast;
    };

    /// Fills the view, which is of the size of a step, with the first step. Where
    /// the guide closes, it hides the view's window.
    OnboardingViewController(QWidget &view, Services services);

    /// Told once the user has gone all the way: with true when the preferences are
    /// to be opened. It may delete this.
    void setOnFinished(std::function<void(bool openPreferences)> onFinished) {
        onFinished_ = std::move(onFinished);
    }

    /// 0 welcome, 1 permission, 2 done. With animation the steps fade into each
    /// other within 0.15 seconds. Where the user has nothing to permit, the last two say
    /// what the tap is at that moment.
    void showStep(int index, bool animated);

    /// Waits no longer for the permission.
    void stopWaiting();

    void goToPermission();
    void skipOnboarding();
    void openAccessibilitySettings();
    void skipPermission();
    void goToDone();
    void finishAndOpenPrefs();
    void finishWithoutPrefs();

    /// Holds the current step's view.
    [[nodiscard]] QWidget *contentContainer() const { return contentContainer_; }
    /// Has waiting for the permission come to a good end?
    [[nodiscard]] bool permissionGranted() const { return permissionGranted_; }
    /// Those of the permission step; null in any other.
    [[nodiscard]] QPushButton *goSettingsBtn() const;
    [[nodiscard]] TextLabel *waitingLabel() const;

private:
    [[nodiscard]] OnboardingStep *makeStep(int index);
    void fade(QWidget *from, QWidget *to);
    void endFade();
    /// Is there a known reason for which keys cannot be seen, other than that the user has
    /// not permitted it?
    [[nodiscard]] bool isObstructed() const;
    /// Is that because there is an extension to install?
    [[nodiscard]] bool lacksExtension() const;
    void showObstruction() const;
    void disablePrimaryButton();
    void startPolling();
    void checkPermission();
    void closeWith(const LTrayText &toast);

    Services services_;
    std::function<void(bool)> onFinished_;
    QWidget *contentContainer_;
    QPointer<OnboardingStep> step_;
    QPointer<QAbstractAnimation> fade_;
    std::unique_ptr<Timers::Timer> permissionTimer_;
    std::unique_ptr<Timers::Timer> nextStepTimer_;
    bool permissionGranted_ = false;
};

/// The window of the first-run guide. Each begins at the first step. Main thread.
class OnboardingWindowController final : public QObject {
    Q_OBJECT

public:
    using Services = OnboardingViewController::Services;

    /// The window is not in view yet.
    explicit OnboardingWindowController(Services services);
    ~OnboardingWindowController() override;

    /// Called when the guide ends with the question answered whether to open the
    /// preferences, closing its window being a no. It may delete this. Not called
    /// where the user leaves by a link, which ends with a notice instead.
    void setOnFinished(std::function<void(bool openPreferences)> onFinished) {
        onFinished_ = std::move(onFinished);
    }

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
