#include "hotkeys/HotkeyMatcher.h"

#include <set>

namespace kestrelbay {

namespace {

constexpr ModifierFlags kMatchedBits = modifier::kGenericMask | modifier::kSideMask;
static_assert(kMatchedBits.bits() <= UINT32_MAX);

bool hasSideBits(ModifierFlags flags) {
    return !(flags & modifier::kSideMask).isEmpty();
}

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
    if (!hasSideBits(hotkey.modifierFlags))
        return true;
    std::set<KeyCode> held;
    for (const KeyCode code : kModifierKeyCodes) {
        const ModifierFlags side = buildDetailedFlags({code}) & modifier::kSideMask;
        if (hotkey.modifierFlags.contains(side))
            held.insert(code);
    }
    return buildDetailedFlags(held) == (hotkey.modifierFlags & kMatchedBits);
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
        const ShortcutRule &rule = rules[i];
        if (!hasTarget(rule))
            continue;
        const ModifierFlags mask =
            hasSideBits(rule.modifierFlags) ? kMatchedBits : modifier::kGenericMask;
        entries_.push_back({.flags = narrow(rule.modifierFlags),
                            .mask = narrow(mask),
                            .ruleIndex = static_cast<std::uint32_t>(i),
                            .keyCode = rule.keyCode});
    }
}

std::optional<std::size_t> HotkeyMatcher::firstMatch(KeyCode keyCode, ModifierFlags current) const {
    const std::uint32_t flags = narrow(current);
    for (const Entry &entry : entries_) {
        if (entry.keyCode == keyCode && (flags & entry.mask) == entry.flags)
            return entry.ruleIndex;
    }
    return std::nullopt;
}

}  // namespace kestrelbay
