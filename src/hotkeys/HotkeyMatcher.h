#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "keys/Hotkey.h"
#include "model/ShortcutRule.h"

namespace kestrelbay {

/// Can a press of the hotkey be told from others? Not when its side bits name
/// other modifiers than its generic bits: no set of held keys gives such flags.
[[nodiscard]] bool canBePressed(const Hotkey &hotkey);

/// The rule's hotkey without the bits that take no part in matching; nothing when
/// the rule can never match a key.
[[nodiscard]] std::optional<Hotkey> matchableHotkey(const ShortcutRule &rule);

/// Finds the rule of a key press. Holds only what matching needs, side by side in
/// memory, since it is walked at every press of a wanted key.
class HotkeyMatcher {
public:
    HotkeyMatcher() = default;
    explicit HotkeyMatcher(const std::vector<ShortcutRule> &rules);

    /// Index, in the list the matcher was made from, of the first rule for this
    /// key under the flags of the held modifiers. Disabled rules match too.
    [[nodiscard]] std::optional<std::size_t> firstMatch(KeyCode keyCode,
                                                        ModifierFlags current) const;

private:
    /// The bits that take part in matching all fit into 32.
    struct Entry {
        std::uint32_t flags;
        std::uint32_t mask;
        std::uint32_t ruleIndex;
        KeyCode keyCode;
    };

    std::vector<Entry> entries_;
};

}  // namespace kestrelbay
