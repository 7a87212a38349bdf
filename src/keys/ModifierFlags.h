#pragma once

#include <cstdint>
#include <set>

#include <QString>

#include "keys/KeyCode.h"

namespace kestrelbay {

/// A set of modifier keys in the event-flags bit layout of macOS: four generic
/// bits (some Command held) and eight side bits (the left Command held). Rules
/// are stored with these numbers, so no value here may change.
class ModifierFlags {
public:
    constexpr ModifierFlags() = default;
    constexpr explicit ModifierFlags(std::uint64_t bits) : bits_(bits) {}

    [[nodiscard]] constexpr std::uint64_t bits() const { return bits_; }
    [[nodiscard]] constexpr bool isEmpty() const { return bits_ == 0; }
    [[nodiscard]] constexpr bool contains(ModifierFlags other) const {
        return (bits_ & other.bits_) == other.bits_;
    }

    constexpr ModifierFlags operator|(ModifierFlags o) const {
        return ModifierFlags(bits_ | o.bits_);
    }
    constexpr ModifierFlags operator&(ModifierFlags o) const {
        return ModifierFlags(bits_ & o.bits_);
    }
    constexpr ModifierFlags operator^(ModifierFlags o) const {
        return ModifierFlags(bits_ ^ o.bits_);
    }
    constexpr ModifierFlags &operator|=(ModifierFlags o) {
        bits_ |= o.bits_;
        return *this;
    }
    constexpr bool operator==(const ModifierFlags &) const = default;
    // NOLINTNEXTLINE(modernize-use-nullptr)
    constexpr auto operator<=>(const ModifierFlags &) const = default;

private:
    std::uint64_t bits_ = 0;
};

/// Bit values of CGEventFlags (kCGEventFlagMask…) and of IOLLEvent.h (NX_DEVICE…).
namespace modifier {
inline constexpr ModifierFlags kShift{0x20000};
inline constexpr ModifierFlags kControl{0x40000};
inline constexpr ModifierFlags kOption{0x80000};
inline constexpr ModifierFlags kCommand{0x100000};
inline constexpr ModifierFlags kLeftControl{0x1};
inline constexpr ModifierFlags kLeftShift{0x2};
inline constexpr ModifierFlags kRightShift{0x4};
inline constexpr ModifierFlags kLeftCommand{0x8};
inline constexpr ModifierFlags kRightCommand{0x10};
inline constexpr ModifierFlags kLeftOption{0x20};
inline constexpr ModifierFlags kRightOption{0x40};
inline constexpr ModifierFlags kRightControl{0x2000};
inline constexpr ModifierFlags kGenericMask{0x1E0000};
inline constexpr ModifierFlags kSideMask{0x207F};
}  // namespace modifier

/// Is a left or right key meant, for any of the modifiers?
[[nodiscard]] constexpr bool namesSide(ModifierFlags flags) {
    return !(flags & modifier::kSideMask).isEmpty();
}

/// The same modifiers, of either side.
[[nodiscard]] constexpr ModifierFlags withoutSides(ModifierFlags flags) {
    return flags ^ (flags & modifier::kSideMask);
}

/// Its generic and its side bit; none of another key than the eight.
[[nodiscard]] ModifierFlags flagsOfModifierKey(KeyCode keyCode);

/// The flags of the held keys together. Codes of other keys are ignored.
[[nodiscard]] ModifierFlags buildDetailedFlags(const std::set<KeyCode> &held);

/// The flags as symbols in the order control, option, shift, command, each with
/// an "L" or "R" before it when exactly one side is meant, e.g. "R⇧L⌘".
[[nodiscard]] QString modifierDisplayString(ModifierFlags flags);

}  // namespace kestrelbay
