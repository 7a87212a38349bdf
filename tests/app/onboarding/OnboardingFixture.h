#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include <QApplication>
#include <QKeyEvent>
#include <QParallelAnimationGroup>
#include <QPushButton>
#include <QTemporaryDir>

#include "app/onboarding/OnboardingSteps.h"
#include "app/onboarding/OnboardingWindowController.h"
#include "fakes/FakeDesktopExtension.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeSystemLog.h"
#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemTray.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "hotkeys/ShortcutManager.h"
#include "settings/L.h"
#include "settings/Language.h"
#include "settings/SettingsKeys.h"
#include "ui/widgets/LinkButton.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

using namespace std::chrono_literals;

/// A guide in view, on a system that does not let the program see keys yet.
class OnboardingFixture : public ::testing::Test {
protected:
    OnboardingFixture() {
        Language::setDefaults(&defaults_);
        tap_.setPermission(false);
        manager_ =
            std::make_unique<ShortcutManager>(folder_.path(), tap_, log_, ShortcutManager::Hooks{});
        open();
    }
    ~OnboardingFixture() override {
        guide_.reset();
        deleteWhatIsDueLater();
        Language::setDefaults(nullptr);
    }

    void open() {
        guide_ = std::make_unique<OnboardingWindowController>(OnboardingWindowController::Services{
            .manager = *manager_,
            .defaults = defaults_,
            .systemSettings = systemSettings_,
            .desktopExtension = &desktopExtension_,
            .systemTray = systemTray_,
            .nativeWindow = nativeWindow_,
            .timers = timers_,
            .showToast =
                [this](const QString &text) {
                    EXPECT_FALSE(guide_->window()->isVisible());
                    toasts_.append(text);
                },
        });
        guide_->setOnFinished([this](bool openPreferences) {
            finished_.append(openPreferences ? QStringLiteral("open") : QStringLiteral("leave"));
        });
        guide_->showWindow();
        tap_.takeCalls();
    }
    void speak(const QString &language) { write(defaults_, settings::kAppLanguage, language); }

    [[nodiscard]] OnboardingViewController &steps() const { return guide_->viewController(); }
    [[nodiscard]] QList<OnboardingStep *> visibleSteps() const {
        QList<OnboardingStep *> visible;
        for (auto *step : steps().contentContainer()->findChildren<OnboardingStep *>()) {
            if (!step->isHidden())
                visible.append(step);
        }
        return visible;
    }
    /// The one in front.
    [[nodiscard]] OnboardingStep &step() const { return *visibleSteps().constLast(); }
    [[nodiscard]] QPushButton &primary() const { return step().primaryButton(); }
    [[nodiscard]] LinkButton &link() const { return step().link(); }
    /// All but the status, from top to bottom.
    [[nodiscard]] QStringList texts() const {
        QStringList texts;
        for (const auto *label : step().findChildren<TextLabel *>()) {
            if (label != step().statusLabel())
                texts.append(label->text());
        }
        return texts << primary().text() << link().text();
    }

    [[nodiscard]] QAbstractAnimation *fade() const {
        return steps().contentContainer()->findChild<QParallelAnimationGroup *>();
    }
    void finishFade() const {
        if (QAbstractAnimation *const running = fade())
            running->setCurrentTime(150);
        deleteWhatIsDueLater();
    }
    void goTo(int index) const {
        steps().showStep(index, true);
        finishFade();
    }
    /// In the permission step, after a click on its button.
    void wait() const {
        goTo(1);
        primary().click();
    }

    static void deleteWhatIsDueLater() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// As the keyboard would, whoever has the focus in the window.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QWidget *const focus = guide_->window()->focusWidget();
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, modifiers);
            QApplication::sendEvent(focus ? focus : guide_->window(), &event);
            if (!guide_ || !guide_->window()->isVisible())
                return;
        }
    }
    [[nodiscard]] bool isCompleted() const {
        return read(defaults_, settings::kOnboardingCompleted);
    }

    QTemporaryDir folder_;
    FakeEventTap tap_;
    FakeSystemLog log_;
    FakeUserDefaults defaults_;
    FakeSystemSettings systemSettings_;
    FakeDesktopExtension desktopExtension_;
    FakeSystemTray systemTray_;
    FakeNativeWindow nativeWindow_;
    FakeTimers timers_;
    std::unique_ptr<ShortcutManager> manager_;
    std::unique_ptr<OnboardingWindowController> guide_;
    QStringList toasts_;
    QStringList finished_;
};

}  // namespace kestrelbay
