#include "hotkeys/HotkeyMatcher.h"

#include <algorithm>

namespace kestrelbay {

namespace {

constexpr ModifierFlags kMatchedBits = modifier::kGenericMask | modifier::kSideMask;
static_assert(kMatchedBits.bits() <= UINT32_MAX);

/// Key code 0 is the key A, but without any flags it stands for "no hotkey".
bool hasTarget(const ShortcutRule &rule) {
    const bool isUnset = rule.keyCode == KeyCode{} && rule.modifierFlags.isEmpty();
    return !rule.appPath.isEmpty() && !isUnset;
}

std::uint32_t narrow(ModifierFlags flags) {
    return static_cast<std::uint32_t>((flags & kMatchedBits).bits());
}

}  // namespace

bool canBePressed(const Hotkey &hotkey) {
    if (isModifierKeyCode(hotkey.keyCode))
        return false;
    if (!namesSide(hotkey.modifierFlags))
        return true;
    ModifierFlags held;
    for (const KeyCode code : kModifierKeyCodes) {
        const ModifierFlags flags = flagsOfModifierKey(code);
        if (hotkey.modifierFlags.contains(flags & modifier::kSideMask))
            held |= flags;
    }
    return held == (hotkey.modifierFlags & kMatchedBits);
}

std::optional<Hotkey> matchableHotkey(const ShortcutRule &rule) {
    const Hotkey hotkey{rule.keyCode, rule.modifierFlags & kMatchedBits};
    if (!hasTarget(rule) || !canBePressed(hotkey))
        return std::nullopt;
    return hotkey;
}

HotkeyMatcher::HotkeyMatcher(const std::vector<ShortcutRule> &rules) {
    entries_.reserve(rules.size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (hasTarget(rules[i]))
            entries_.push_back({.keyCode = rules[i].keyCode,
                                .flags = narrow(rules[i].modifierFlags),
                                .ruleIndex = static_cast<std::uint32_t>(i)});
    }
    std::ranges::sort(entries_);
    const auto isSameHotkey = [](const Entry &a, const Entry &b) {
        return a.keyCode == b.keyCode && a.flags == b.flags;
    };
    entries_.erase(std::unique(entries_.begin(), entries_.end(), isSameHotkey), entries_.end());
}

std::optional<std::size_t> HotkeyMatcher::firstMatch(KeyCode keyCode, ModifierFlags current) const {
    // A rule with side bits asks for exactly the flags of the held keys, one without for
    // their generic ones.
    const std::optional<std::size_t> sided = ruleOf(keyCode, current & kMatchedBits);
    const std::optional<std::size_t> generic = ruleOf(keyCode, current & modifier::kGenericMask);
    if (sided && generic)
        return std::min(*sided, *generic);
    return sided ? sided : generic;
}

std::optional<std::size_t> HotkeyMatcher::ruleOf(KeyCode keyCode, ModifierFlags flags) const {
    const Entry first{.keyCode = keyCode, .flags = narrow(flags), .ruleIndex = 0};
    const auto found = std::ranges::lower_bound(entries_, first);
    if (found == entries_.end() || found->keyCode != keyCode || found->flags != first.flags)
        return std::nullopt;
    return found->ruleIndex;
}

std::vector<Hotkey> HotkeyMatcher::matchableHotkeys() const {
    std::vector<Hotkey> hotkeys;
    hotkeys.reserve(entries_.size());
    for (const Entry &entry : entries_) {
        const Hotkey hotkey{entry.keyCode, ModifierFlags(entry.flags)};
        if (canBePressed(hotkey))
            hotkeys.push_back(hotkey);
    }
    return hotkeys;
}

}  // namespace kestrelbay
