#include "platform/linux/wayland/sway/SwayBinding.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kestrelbay::sway {

namespace {

struct ModifierName {
    QByteArrayView name;
    Modifiers modifiers;
};

// Of two names for one modifier the first is written.
constexpr std::array kModifierNames{
    ModifierName{"Shift", kShift},     ModifierName{"Lock", 1U << 1U},
    ModifierName{"Control", 1U << 2U}, ModifierName{"Ctrl", 1U << 2U},
    ModifierName{"Mod1", 1U << 3U},    ModifierName{"Alt", 1U << 3U},
    ModifierName{"Mod2", 1U << 4U},    ModifierName{"Mod3", 1U << 5U},
    ModifierName{"Mod4", 1U << 6U},    ModifierName{"Super", 1U << 6U},
    ModifierName{"Mod5", 1U << 7U},
};

constexpr std::array kKinds{
    std::pair{modifier::kShift, kShift},
    std::pair{modifier::kControl, Modifiers{1U << 2U}},
    std::pair{modifier::kOption, Modifiers{1U << 3U}},
    std::pair{modifier::kCommand, Modifiers{1U << 6U}},
};

QByteArray joined(std::span<const Position> positions, auto command) {
    QByteArray text;
    for (const Position &position : positions) {
        if (!text.isEmpty())
            text += "; ";
        text += command(position);
    }
    return text;
}

}  // namespace

std::optional<Modifiers> modifierNamed(QByteArrayView name) {
    const auto *const found =
        std::ranges::find_if(kModifierNames, [name](const ModifierName &known) {
            return known.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    return found == kModifierNames.end() ? std::nullopt : std::optional(found->modifiers);
}

std::optional<Position> positionOf(const Hotkey &hotkey) {
    const std::optional<XKeycode> key = toXKeycode(hotkey.keyCode);
    if (!key)
        return std::nullopt;
    Position position{.modifiers = 0, .key = *key};
    for (const auto &[flag, modifiers] : kKinds) {
        if (hotkey.modifierFlags.contains(flag))
            position.modifiers |= modifiers;
    }
    return position;
}

QByteArray toText(const Position &position) {
    QByteArray text;
    Modifiers left = position.modifiers;
    for (const ModifierName &known : kModifierNames) {
        if ((left & known.modifiers) == 0)
            continue;
        text.append(known.name).append('+');
        left &= static_cast<Modifiers>(~known.modifiers);
    }
    return text + QByteArray::number(position.key);
}

QByteArray commandOf(const Position &position) {
    return "nop kestrelbay " + toText(position);
}

QByteArray bindCommands(std::span<const Position> positions) {
    return joined(positions, [](const Position &position) {
        return "bindcode --inhibited --no-repeat " + toText(position) + ' ' + commandOf(position);
    });
}

QByteArray unbindCommands(std::span<const Position> positions) {
    return joined(positions, [](const Position &position) {
        return "unbindcode --inhibited " + toText(position);
    });
}

QByteArray inDefaultMode(const QByteArray &commands, const QByteArray &mode) {
    if (mode == kDefaultMode)
        return commands;
    // sway knows no other way to write a quote than between quotes of the other kind, so no name
    // has both.
    const char quote = mode.contains('"') ? '\'' : '"';
    return "mode \"default\"; " + commands + "; mode " + quote + mode + quote;
}

}  // namespace kestrelbay::sway
