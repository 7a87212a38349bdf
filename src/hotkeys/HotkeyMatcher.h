#pragma once

#include <compare>
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

/// Finds the rule of a key press, in a time that hardly grows with their number, and
/// without asking for memory: the user's keyboard waits for it.
class HotkeyMatcher {
public:
    HotkeyMatcher() = default;
    explicit HotkeyMatcher(const std::vector<ShortcutRule> &rules);

    /// Index, in the list the matcher was made from, of the first rule for this
    /// key under the flags of the held modifiers. Disabled rules match too.
    [[nodiscard]] std::optional<std::size_t> firstMatch(KeyCode keyCode,
                                                        ModifierFlags current) const;

    /// The matchableHotkey() of all rules, sorted, each once.
    [[nodiscard]] std::vector<Hotkey> matchableHotkeys() const;

private:
    /// The first rule that has this hotkey.
    struct Entry {
        KeyCode keyCode;
        std::uint32_t flags;  ///< those that take part in matching all fit
        std::uint32_t ruleIndex;

        auto operator<=>(const Entry &) const = default;  // NOLINT(modernize-use-nullptr)
    };

    [[nodiscard]] std::optional<std::size_t> ruleOf(KeyCode keyCode, ModifierFlags flags) const;

    std::vector<Entry> entries_;  // sorted, each hotkey once
};

}  // namespace kestrelbay
