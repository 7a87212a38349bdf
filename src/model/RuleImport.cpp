#include "model/RuleImport.h"

#include <algorithm>

#include <QFileInfo>

#include "model/HotkeyConflict.h"
#include "model/RuleFile.h"

namespace kestrelbay {

namespace {

constexpr qint64 kMostBytes = qint64{4} * 1024 * 1024;
constexpr std::size_t kMostRules = 10'000;

bool isThere(const std::vector<ShortcutRule> &rules, const ShortcutRule &rule) {
    return std::ranges::any_of(rules, [same = rule](const ShortcutRule &other) mutable {
        same.id = other.id;
        return same == other;
    });
}

}  // namespace

RuleImport planImport(const std::vector<ShortcutRule> &present,
                      const std::vector<ShortcutRule> &rules) {
    RuleImport import;
    std::vector<ShortcutRule> all = present;
    for (ShortcutRule rule : rules) {
        if (rule.appPath.isEmpty()) {
            import.leftOut.push_back({rule, RuleImport::Reason::NoApplication});
            continue;
        }
        bool isKnown = isThere(all, rule);
        // Before the hotkeys are compared: a rule is never in the way of itself.
        if (std::ranges::find(all, rule.id, &ShortcutRule::id) != all.end())
            rule.id = QUuid::createUuid();
        const bool losesHotkey = !isKnown && isHotkeyTaken(all, rule);
        if (losesHotkey) {
            rule.keyCode = {};
            rule.modifierFlags = {};
            // It may have come without it before.
            isKnown = isThere(all, rule);
        }
        if (isKnown) {
            import.leftOut.push_back({rule, RuleImport::Reason::AlreadyThere});
            continue;
        }
        all.push_back(rule);
        import.additions.push_back({rule, losesHotkey});
    }
    return import;
}

std::optional<std::vector<ShortcutRule>> readRulesToImport(const QString &path, QString &problem) {
    if (QFileInfo(path).size() > kMostBytes) {
        problem = QStringLiteral("it is too large");
        return std::nullopt;
    }
    RuleFile::LoadResult loaded = RuleFile(path).load();
    problem = loaded.status == RuleFile::LoadStatus::Missing ? QStringLiteral("there is none")
              : loaded.rules.size() > kMostRules ? QStringLiteral("it has more than 10,000 rules")
                                                 : loaded.problem;
    return problem.isEmpty() ? std::optional(std::move(loaded.rules)) : std::nullopt;
}

}  // namespace kestrelbay
