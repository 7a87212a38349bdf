#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "fixtures/ServicesFixture.h"
#include "model/RuleFile.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/RuleDeletion.h"
#include "preferences/rules/RulesViewController.h"

namespace kestrelbay {

/// What a rules list works with, and sheets that are confirmed by hand.
class RulesListFixture : public ServicesFixture {
protected:
    /// Rules named by their first place in the list: "0", "1", …
    void addRules(int count) {
        // At once: each single one would be written to the disk and waited for.
        std::vector<ShortcutRule> rules = manager().rules();
        for (int i = 0; i < count; ++i) {
            const QString name = QString::number(rules.size());
            rules.push_back({.appName = name, .appPath = QStringLiteral("/Applications/") + name});
        }
        ASSERT_TRUE(RuleFile(filePath()).save(rules));
        manager().loadRules();
    }
    /// The text as the user reads it, for lists of one-character names.
    [[nodiscard]] QString order() { return names().join(QString()); }

    [[nodiscard]] RuleSheets sheets() {
        return {
            .pickApplication =
                [this](QWidget *, RuleSheets::Picked completion) { pick_ = std::move(completion); },
            .editRule =
                [this](QWidget *, const ShortcutRule &rule, RuleSheets::Edited completion) {
                    editedRules_.append(rule.appName);
                    edit_ = std::move(completion);
                },
            .importRules = [this](QWidget *,
                                  const std::function<void()> &added) { import_ = added; },
            .exportRules = [this](QWidget *) { ++exports_; }};
    }

    ApplicationIconCache icons_{services()};
    RuleDeletion deletion_{services()};

    /// The completions of the sheets opened last.
    RuleSheets::Picked pick_;
    RuleSheets::Edited edit_;
    std::function<void()> import_;
    int exports_ = 0;
    /// The names of the rules whose options were opened.
    QStringList editedRules_;
};

}  // namespace kestrelbay
