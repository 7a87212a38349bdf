#pragma once

#include <vector>

#include "keys/Hotkey.h"
#include "model/ShortcutRule.h"

namespace kestrelbay {

/// The first rule, other than the one with this id, that already has the hotkey;
/// null when none has. A rule for either side of a modifier has those of both sides
/// too; but a recorded hotkey for either side leaves those of one side alone, which
/// a press then finds by the order of the list.
[[nodiscard]] const ShortcutRule *conflictingRule(const std::vector<ShortcutRule> &rules,
                                                  const QUuid &id, const Hotkey &recorded);

/// Has another of the rules the hotkey of this one? Not when it has none.
[[nodiscard]] bool isHotkeyTaken(const std::vector<ShortcutRule> &rules, const ShortcutRule &rule);

}  // namespace kestrelbay
