#include "keys/ModifierFlags.h"

#include <algorithm>
#include <array>

namespace kestrelbay {

namespace {

struct KeyFlags {
    KeyCode keyCode;
    ModifierFlags flags;
};

constexpr std::array<KeyFlags, 8> kFlagsOfKeys{{
    {key::kLeftCommand, modifier::kCommand | modifier::kLeftCommand},
    {key::kRightCommand, modifier::kCommand | modifier::kRightCommand},
    {key::kLeftShift, modifier::kShift | modifier::kLeftShift},
    {key::kRightShift, modifier::kShift | modifier::kRightShift},
    {key::kLeftOption, modifier::kOption | modifier::kLeftOption},
    {key::kRightOption, modifier::kOption | modifier::kRightOption},
    {key::kLeftControl, modifier::kControl | modifier::kLeftControl},
    {key::kRightControl, modifier::kControl | modifier::kRightControl},
}};

struct Kind {
    ModifierFlags left;
    ModifierFlags right;
    ModifierFlags generic;
    char16_t symbol;
};

constexpr std::array<Kind, 4> kKindsInDisplayOrder{{
    {modifier::kLeftControl, modifier::kRightControl, modifier::kControl, u'⌃'},
    {modifier::kLeftOption, modifier::kRightOption, modifier::kOption, u'⌥'},
    {modifier::kLeftShift, modifier::kRightShift, modifier::kShift, u'⇧'},
    {modifier::kLeftCommand, modifier::kRightCommand, modifier::kCommand, u'⌘'},
}};

}  // namespace

ModifierFlags flagsOfModifierKey(KeyCode keyCode) {
    const auto *const found = std::ranges::find(kFlagsOfKeys, keyCode, &KeyFlags::keyCode);
    return found == kFlagsOfKeys.end() ? ModifierFlags() : found->flags;
}

ModifierFlags buildDetailedFlags(const std::set<KeyCode> &held) {
    ModifierFlags flags;
    for (const KeyCode keyCode : held)
        flags |= flagsOfModifierKey(keyCode);
    return flags;
}

QString modifierDisplayString(ModifierFlags flags) {
    QString text;
    for (const Kind &kind : kKindsInDisplayOrder) {
        const bool left = flags.contains(kind.left);
        const bool right = flags.contains(kind.right);
        if (!left && !right && !flags.contains(kind.generic))
            continue;
        if (left != right)
            text += left ? u'L' : u'R';
        text += kind.symbol;
    }
    return text;
}

}  // namespace kestrelbay
