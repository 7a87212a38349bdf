#pragma once

#include <vector>

#include <QTemporaryDir>

#include "fakes/FakeEventTap.h"
#include "fakes/FakePreferencesServices.h"
#include "fakes/FakeSystemLog.h"
#include "hotkeys/ShortcutManager.h"
#include "model/RuleFile.h"

namespace kestrelbay {

/// What the preferences work with. Nothing of it takes time, and what is left to
/// another thread runs when finishWork() is called.
class Services : private FakePreferencesServices {
public:
    explicit Services(const std::vector<ShortcutRule> &rules = {}) {
        RuleFile(folder_.filePath(QStringLiteral("rules.json"))).save(rules);
        manager_.loadRules();
    }

    [[nodiscard]] PreferencesServices all() { return servicesFor(manager_); }
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
};

}  // namespace kestrelbay
