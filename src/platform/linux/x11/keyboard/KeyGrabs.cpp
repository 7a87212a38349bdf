#include "platform/linux/x11/keyboard/KeyGrabs.h"

#include <optional>

namespace kestrelbay::x11 {

namespace {

struct Kind {
    KeyCode left;
    KeyCode right;
};

constexpr std::array kKinds{
    Kind{key::kLeftShift, key::kRightShift},
    Kind{key::kLeftControl, key::kRightControl},
    Kind{key::kLeftOption, key::kRightOption},
    Kind{key::kLeftCommand, key::kRightCommand},
};

using Masks = std::set<unsigned>;

unsigned maskOf(KeyCode code, const KeyboardModel &keyboard) {
    const std::optional<XKeycode> keycode = toXKeycode(code);
    return keycode ? keyboard.modifiersOfKey.at(*keycode) : 0U;
}

/// The states of the X modifiers that mean this kind of modifier. The two keys of
/// a kind may set different ones: on many layouts the right Option key is
/// ISO_Level3_Shift and sets Mod5. A key that sets none can't take part in a grab.
Masks masksOfKind(const Kind &kind, ModifierFlags flags, const KeyboardModel &keyboard) {
    const ModifierFlags leftFlags = buildDetailedFlags({kind.left});
    if (!flags.contains(leftFlags & modifier::kGenericMask))
        return {0};
    const unsigned left = maskOf(kind.left, keyboard);
    const unsigned right = maskOf(kind.right, keyboard);
    const bool wantsLeft = flags.contains(leftFlags);
    const bool wantsRight = flags.contains(buildDetailedFlags({kind.right}));
    Masks masks;
    if ((flags & modifier::kSideMask).isEmpty())
        masks = {left, right, left | right};
    else if (wantsLeft && wantsRight && left != 0 && right != 0)
        masks = {left | right};
    else if (wantsLeft != wantsRight)
        masks = {wantsLeft ? left : right};
    masks.erase(0);
    return masks;
}

Masks combine(const Masks &a, const Masks &b) {
    Masks combined;
    for (const unsigned one : a) {
        for (const unsigned other : b)
            combined.insert(one | other);
    }
    return combined;
}

}  // namespace

std::set<KeyGrab> grabsFor(const Hotkey &hotkey, const KeyboardModel &keyboard) {
    const std::optional<XKeycode> keycode = toXKeycode(hotkey.keyCode);
    if (!keycode)
        return {};

    Masks states{0};
    for (const Kind &kind : kKinds)
        states = combine(states, masksOfKind(kind, hotkey.modifierFlags, keyboard));

    std::set<KeyGrab> grabs;
    for (const unsigned state : states) {
        // A lock modifier that the hotkey itself uses is no lock for it.
        const unsigned locks = keyboard.lockModifiers & ~state;
        // Every subset of the lock modifiers, the empty one last.
        for (unsigned subset = locks;; subset = (subset - 1) & locks) {
            grabs.insert({*keycode, static_cast<std::uint8_t>(state | subset)});
            if (subset == 0)
                break;
        }
    }
    return grabs;
}

}  // namespace kestrelbay::x11
