#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <QByteArray>
#include <QByteArrayView>

#include "keys/Hotkey.h"
#include "platform/linux/keycodes/KeyCodeTable.h"

namespace kestrelbay::sway {

/// A modifier by XKB's real ones, in the order of their bits: Shift, Lock, Control, Mod1 … Mod5.
using Modifiers = std::uint8_t;

inline constexpr Modifiers kShift = 1U << 0U;

/// As sway reads it in a binding, in whatever case; none for the name of a key.
[[nodiscard]] std::optional<Modifiers> modifierNamed(QByteArrayView name);

/// A key, by its position, together with modifiers.
struct Position {
    Modifiers modifiers = 0;
    XKeycode key = 0;

    auto operator<=>(const Position &) const = default;
};

/// Where a hotkey is on the keyboard, whatever side it names; none for a key that no keyboard of
/// this system has.
[[nodiscard]] std::optional<Position> positionOf(const Hotkey &hotkey);

/// "Mod4+Shift+28".
[[nodiscard]] QByteArray toText(const Position &position);

// What sway is to do. Bindings of ours are marked "--inhibited", by which sway keeps them apart
// from others of the same key: neither replaces the other, and to unbind ours leaves theirs.

/// What a binding runs, and what the event of its press names: nothing that has an effect.
[[nodiscard]] QByteArray commandOf(const Position &position);
/// One command a position, in their order.
[[nodiscard]] QByteArray bindCommands(std::span<const Position> positions);
[[nodiscard]] QByteArray unbindCommands(std::span<const Position> positions);

/// The binding mode that is on unless the user has chosen another.
inline constexpr QByteArrayView kDefaultMode = "default";

/// For a shell that has such commands as $keys and sway's socket as $1.
inline constexpr const char *kUnbindAtEnd = R"(exec swaymsg -q -s "$1" -- "mode default; $keys")";

/// The same in the binding mode "default" while this mode is on: run-time bindings are those of the
/// mode that is on. Whether a mode's name is markup sway knows by itself.
[[nodiscard]] QByteArray inDefaultMode(const QByteArray &commands, const QByteArray &mode);

}  // namespace kestrelbay::sway
