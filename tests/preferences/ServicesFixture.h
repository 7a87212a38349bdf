#pragma once

#include <gtest/gtest.h>

#include <memory>

#include <QTemporaryDir>

#include "core/QtPrinters.h"
#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeSystemLog.h"
#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualDispatchQueue.h"
#include "hotkeys/ShortcutManager.h"
#include "preferences/PreferencesServices.h"
#include "settings/Language.h"
#include "settings/LaunchAtLogin.h"
#include "settings/NotificationCenter.h"

namespace kestrelbay {

/// What the preferences work with, all of it faked but the rules, their file, and what
/// has no side but this one.
class ServicesFixture : public testing::Test {
protected:
    ServicesFixture() { Language::setDefaults(&defaults_); }
    ~ServicesFixture() override { Language::setDefaults(nullptr); }

    /// Made at the first call, with the permission as it is by then.
    ShortcutManager &manager() {
        if (!manager_)
            manager_ = std::make_unique<ShortcutManager>(storageDirectory(), tap_, log_,
                                                         ShortcutManager::Hooks{});
        return *manager_;
    }
    [[nodiscard]] QString storageDirectory() const { return folder_.path(); }

    [[nodiscard]] PreferencesServices services() {
        return {.manager = manager(),
                .defaults = defaults_,
                .catalog = catalog_,
                .workspace = workspace_,
                .sounds = sounds_,
                .systemSettings = systemSettings_,
                .nativeWindow = nativeWindow_,
                .launchAtLogin = launchAtLogin_,
                .notificationCenter = center_,
                .timers = timers_,
                .mainQueue = mainQueue_,
                .backgroundQueue = backgroundQueue_,
                .showToast = [this](const QString &message, const QString &,
                                    const std::function<void()> &) { toasts_.append(message); }};
    }

    void choose(Language language) {
        defaults_.setString(QStringLiteral("appLanguage"), language.rawValue());
    }
    void changeLanguage(Language language) {
        choose(language);
        center_.post(notifications::kLanguageDidChange);
    }

    FakeEventTap tap_;
    FakeSystemLog log_;
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

private:
    QTemporaryDir folder_;
    std::unique_ptr<ShortcutManager> manager_;
};

}  // namespace kestrelbay
