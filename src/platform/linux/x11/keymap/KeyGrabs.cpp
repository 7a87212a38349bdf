#include "platform/linux/x11/keymap/KeyGrabs.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <optional>

namespace kestrelbay::x11 {

namespace {

struct Kind {
    KeyCode left;
    KeyCode right;
    /// The modifier that the core protocol itself names after the kind.
    std::uint8_t core;
};

constexpr std::array kKinds{
    Kind{key::kLeftShift, key::kRightShift, XCB_MOD_MASK_SHIFT},
    Kind{key::kLeftControl, key::kRightControl, XCB_MOD_MASK_CONTROL},
    Kind{key::kLeftOption, key::kRightOption, 0},
    Kind{key::kLeftCommand, key::kRightCommand, 0},
};

using Masks = std::set<std::uint8_t>;

Masks masksOf(KeyCode code, const KeyboardModel &keyboard) {
    const std::optional<XKeycode> keycode = toXKeycode(code);
    return keycode ? keyboard.modifiersOfKey.at(*keycode) : Masks();
}

std::uint8_t unionOf(const Masks &masks) {
    return std::accumulate(masks.begin(), masks.end(), std::uint8_t{0}, std::bit_or<>());
}

Masks combine(const Masks &a, const Masks &b) {
    Masks combined;
    for (const std::uint8_t one : a) {
        for (const std::uint8_t other : b)
            combined.insert(one | other);
    }
    return combined;
}

/// The states of the X modifiers that mean this kind of modifier. The two keys of
/// a kind may set different ones: on many layouts the right Option key is
/// ISO_Level3_Shift and sets Mod5. A key that sets none can't take part in a grab.
Masks masksOfKind(const Kind &kind, ModifierFlags flags, const KeyboardModel &keyboard) {
    const ModifierFlags leftFlags = buildDetailedFlags({kind.left});
    if (!flags.contains(leftFlags & modifier::kGenericMask))
        return {0};
    Masks left = masksOf(kind.left, keyboard);
    // Where another key took the left one's place, as Caps Lock may Control's.
    if (kind.core != 0)
        left.insert(kind.core);
    Masks right = masksOf(kind.right, keyboard);
    const bool wantsLeft = flags.contains(leftFlags);
    const bool wantsRight = flags.contains(buildDetailedFlags({kind.right}));
    if (wantsLeft && wantsRight)
        return combine(left, right);
    if (wantsLeft)
        return left;
    if (wantsRight)
        return right;
    if (namesSide(flags))
        return {};
    Masks either = combine(left, right);
    either.insert(left.begin(), left.end());
    either.insert(right.begin(), right.end());
    return either;
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

bool areExplained(std::uint8_t modifiers, const std::set<KeyCode> &held,
                  const KeyboardModel &keyboard) {
    unsigned unexplained = modifiers & ~unsigned{keyboard.lockModifiers};
    for (const KeyCode code : held) {
        const Masks masks = masksOf(code, keyboard);
        const bool isSet = masks.empty() || std::ranges::any_of(masks, [&](std::uint8_t mask) {
                               return (mask & ~unsigned{modifiers}) == 0;
                           });
        if (!isSet)
            return false;
        unexplained &= ~unsigned{unionOf(masks)};
    }
    return unexplained == 0;
}

std::set<KeyCode> unheldModifiers(std::uint8_t modifiers, const std::set<KeyCode> &held,
                                  const KeyboardModel &keyboard) {
    unsigned unexplained = modifiers & ~unsigned{keyboard.lockModifiers};
    for (const KeyCode code : held)
        unexplained &= ~unsigned{unionOf(masksOf(code, keyboard))};

    std::set<KeyCode> missing;
    const auto explainBy = [&](auto modifiersOf) {
        for (const Kind &kind : kKinds) {
            const std::uint8_t own = modifiersOf(kind);
            if ((unexplained & own) == 0)
                continue;
            missing.insert(kind.left);
            unexplained &= ~unsigned{own};
        }
    };
    explainBy([&](const Kind &kind) { return unionOf(masksOf(kind.left, keyboard)); });
    explainBy([](const Kind &kind) { return kind.core; });
    explainBy([&](const Kind &kind) { return unionOf(masksOf(kind.right, keyboard)); });
    return missing;
}

}  // namespace kestrelbay::x11
