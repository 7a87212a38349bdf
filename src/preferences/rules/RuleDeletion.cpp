#include "preferences/rules/RuleDeletion.h"

#include <QPointer>

#include <algorithm>
#include <optional>

#include "hotkeys/ShortcutManager.h"
#include "model/HotkeyConflict.h"
#include "preferences/RuleRowTexts.h"
#include "settings/L.h"

namespace kestrelbay {

void RuleDeletion::remove(QUuid id) {
    ShortcutManager &manager = services_.manager;
    const auto place =
        std::ranges::find(manager.rules(), id, &ShortcutRule::id) - manager.rules().begin();
    const std::optional<ShortcutRule> rule = manager.removeRule(place);
    if (!rule)
        return;
    deleted_.push_back({*rule, static_cast<std::size_t>(place)});
    services_.showToast(L::ruleDeleted(shownAppName(*rule)), L::undo(),
                        [self = QPointer(this), id] {
                            if (self)
                                self->restore(id);
                        });
}

void RuleDeletion::undo() {
    if (!deleted_.empty())
        restore(deleted_.back().rule.id);
}

void RuleDeletion::restore(QUuid id) {
    const auto found =
        std::ranges::find(deleted_, id, [](const Deleted &deleted) { return deleted.rule.id; });
    // A toast may be pressed twice.
    if (found == deleted_.end())
        return;
    Deleted deleted = *found;
    deleted_.erase(found);
    ShortcutRule &rule = deleted.rule;
    const bool losesHotkey = isHotkeyTaken(services_.manager.rules(), rule);
    if (losesHotkey) {
        rule.keyCode = {};
        rule.modifierFlags = {};
    }
    services_.manager.insertRule(rule, deleted.place);
    const QString name = shownAppName(rule);
    services_.showToast(losesHotkey ? L::ruleRestoredWithoutHotkey(name) : L::ruleRestored(name),
                        {}, {});
    Q_EMIT restored(id);
}

}  // namespace kestrelbay
