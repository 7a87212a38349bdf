#pragma once

#include <functional>

#include "core/ManagerFixture.h"
#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualDispatchQueue.h"
#include "preferences/PreferencesServices.h"
#include "settings/Language.h"
#include "settings/LaunchAtLogin.h"
#include "settings/NotificationCenter.h"

namespace kestrelbay {

/// What the preferences work with, all of it faked but the rules, their file, and what
/// has no side but this one.
class ServicesFixture : public ManagerFixture {
protected:
    ServicesFixture() { Language::setDefaults(&defaults_); }
    ~ServicesFixture() override { Language::setDefaults(nullptr); }

    [[nodiscard]] QString storageDirectory() const { return folder_.path(); }

    [[nodiscard]] PreferencesServices services(Timers &timers, DispatchQueue &mainQueue) {
        return {.manager = manager(),
                .defaults = defaults_,
                .catalog = catalog_,
                .workspace = workspace_,
                .sounds = sounds_,
                .systemSettings = systemSettings_,
                .nativeWindow = nativeWindow_,
                .launchAtLogin = launchAtLogin_,
                .notificationCenter = center_,
                .timers = timers,
                .mainQueue = mainQueue,
                .backgroundQueue = backgroundQueue_,
                .showToast = [this](const QString &message, const QString &actionTitle,
                                    const std::function<void()> &action) {
                    toasts_.append(message);
                    lastToastAction_ = {actionTitle, action};
                }};
    }
    [[nodiscard]] PreferencesServices services() { return services(timers_, mainQueue_); }

    void choose(Language language) {
        defaults_.setString(QStringLiteral("appLanguage"), language.rawValue());
    }
    void changeLanguage(Language language) {
        choose(language);
        center_.post(notifications::kLanguageDidChange);
    }

    struct ToastAction {
        QString title;
        std::function<void()> run;
    };

    FakeUserDefaults defaults_;
    FakeApplicationCatalog catalog_;
    FakeWorkspace workspace_;
    FakeSystemSounds sounds_;
    FakeSystemSettings systemSettings_;
    FakeNativeWindow nativeWindow_;
    FakeLoginItem loginItem_;
    QStringList launchAtLoginFailures_;
    LaunchAtLogin launchAtLogin_{loginItem_, defaults_,
                                 [this](const LaunchAtLogin::Failure &failure) {
                                     launchAtLoginFailures_.append(failure.informativeText);
                                 }};
    NotificationCenter center_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ManualDispatchQueue backgroundQueue_;
    QStringList toasts_;
    ToastAction lastToastAction_;
};

}  // namespace kestrelbay
