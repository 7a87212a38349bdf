#include "model/HotkeyConflict.h"

#include <algorithm>

namespace kestrelbay {

const ShortcutRule *conflictingRule(const std::vector<ShortcutRule> &rules, const QUuid &id,
                                    const Hotkey &recorded) {
    const auto found = std::ranges::find_if(rules, [&](const ShortcutRule &rule) {
        if (rule.id == id || rule.keyCode != recorded.keyCode)
            return false;
        const ModifierFlags different = rule.modifierFlags ^ recorded.modifierFlags;
        if (!(different & modifier::kGenericMask).isEmpty())
            return false;
        return !namesSide(rule.modifierFlags) || !namesSide(different);
    });
    return found == rules.end() ? nullptr : &*found;
}

bool isHotkeyTaken(const std::vector<ShortcutRule> &rules, const ShortcutRule &rule) {
    const bool hasHotkey = rule.keyCode != KeyCode{} || !rule.modifierFlags.isEmpty();
    return hasHotkey && conflictingRule(rules, rule.id, {rule.keyCode, rule.modifierFlags});
}

}  // namespace kestrelbay
