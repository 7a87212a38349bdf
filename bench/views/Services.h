#pragma once

#include <utility>
#include <vector>

#include <QTemporaryDir>

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
#include "model/RuleFile.h"
#include "preferences/PreferencesServices.h"
#include "settings/LaunchAtLogin.h"
#include "settings/NotificationCenter.h"

namespace kestrelbay {

/// What the preferences work with. Nothing of it takes time, and what is left to
/// another thread runs when finishWork() is called.
class Services {
public:
    explicit Services(const std::vector<ShortcutRule> &rules = {}) {
        RuleFile(folder_.filePath(QStringLiteral("rules.json"))).save(rules);
        manager_.loadRules();
    }

    [[nodiscard]] PreferencesServices all() {
        return {
            .manager = manager_,
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
            .showToast = [](const QString &, const QString &, const std::function<void()> &) {}};
    }
    [[nodiscard]] FakeApplicationCatalog &catalog() { return catalog_; }

    void finishWork() {
        while (mainQueue_.pendingCount() + backgroundQueue_.pendingCount() > 0) {
            backgroundQueue_.runAll();
            mainQueue_.runAll();
        }
    }

private:
    QTemporaryDir folder_;
    FakeEventTap tap_;
    FakeSystemLog log_;
    ShortcutManager manager_{folder_.path(), tap_, log_, {}};
    FakeUserDefaults defaults_;
    FakeApplicationCatalog catalog_;
    FakeWorkspace workspace_;
    FakeSystemSounds sounds_;
    FakeSystemSettings systemSettings_;
    FakeNativeWindow nativeWindow_;
    FakeLoginItem loginItem_;
    LaunchAtLogin launchAtLogin_{loginItem_, defaults_, {}};
    NotificationCenter center_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ManualDispatchQueue backgroundQueue_;
};

}  // namespace kestrelbay
