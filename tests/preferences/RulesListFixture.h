#pragma once

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include <QStringList>
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
#include "model/RuleFile.h"
#include "preferences/ApplicationIconCache.h"
#include "preferences/RuleSheets.h"
#include "settings/Language.h"
#include "settings/LaunchAtLogin.h"
#include "settings/NotificationCenter.h"
#include "settings/SettingsKeys.h"

namespace kestrelbay {

/// What a rules list works with, and sheets that are confirmed by hand.
class RulesListFixture : public ::testing::Test {
protected:
    RulesListFixture() { Language::setDefaults(&defaults_); }
    ~RulesListFixture() override { Language::setDefaults(nullptr); }

    /// Rules named by their first place in the list: "0", "1", …
    void addRules(int count) {
        // At once: each single one would be written to the disk and waited for.
        std::vector<ShortcutRule> rules = manager_.rules();
        for (int i = 0; i < count; ++i) {
            const QString name = QString::number(rules.size());
            rules.push_back({.appName = name, .appPath = QStringLiteral("/Applications/") + name});
        }
        ASSERT_TRUE(RuleFile(folder_.filePath(QStringLiteral("rules.json"))).save(rules));
        manager_.loadRules();
    }
    [[nodiscard]] QStringList names() const {
        QStringList names;
        for (const ShortcutRule &rule : manager_.rules())
            names.append(rule.appName);
        return names;
    }
    /// The text as the user reads it, for lists of one-character names.
    [[nodiscard]] QString order() const { return names().join(QString()); }

    [[nodiscard]] PreferencesServices services(Timers &timers, DispatchQueue &mainQueue) {
        return {.manager = manager_,
                .defaults = defaults_,
                .catalog = catalog_,
                .workspace = workspace_,
                .sounds = sounds_,
                .systemSettings = systemSettings_,
                .nativeWindow = nativeWindow_,
                .launchAtLogin = launchAtLogin_,
                .notificationCenter = notificationCenter_,
                .timers = timers,
                .mainQueue = mainQueue,
                .backgroundQueue = backgroundQueue_,
                .showToast = [this](const QString &text, const QString &,
                                    const std::function<void()> &) { toasts_.append(text); }};
    }
    [[nodiscard]] PreferencesServices services() { return services(timers_, mainQueue_); }

    [[nodiscard]] RuleSheets sheets() {
        return {
            .pickApplication =
                [this](QWidget *, RuleSheets::Picked completion) { pick_ = std::move(completion); },
            .editRule =
                [this](QWidget *, const ShortcutRule &rule, RuleSheets::Edited completion) {
                    editedRules_.append(rule.appName);
                    edit_ = std::move(completion);
                }};
    }

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
    NotificationCenter notificationCenter_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ManualDispatchQueue backgroundQueue_;
    QStringList toasts_;

    ApplicationIconCache icons_{services()};

    /// The completions of the sheets opened last.
    RuleSheets::Picked pick_;
    RuleSheets::Edited edit_;
    /// The names of the rules whose options were opened.
    QStringList editedRules_;
};

}  // namespace kestrelbay
