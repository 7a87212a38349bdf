#pragma once

#include <cstdint>
#include <vector>

#include <QString>

#include "support/KeyPresser.h"

namespace kestrelbay::desktop {

/// One key: its number in a rule, its key code on X, and what is printed on it.
struct Key {
    std::uint16_t ruleCode;
    std::uint8_t xKeycode;
    char16_t label;
};

namespace keys {
inline constexpr Key kA{0, 38, u'A'}, kC{8, 54, u'C'}, kB{11, 56, u'B'}, kD{2, 40, u'D'},
    kE{14, 26, u'E'}, kF{3, 41, u'F'}, kG{5, 42, u'G'}, kH{4, 43, u'H'}, kI{34, 31, u'I'},
    kJ{38, 44, u'J'}, kK{40, 45, u'K'}, kN{45, 57, u'N'}, kO{31, 32, u'O'}, kP{35, 33, u'P'},
    kR{15, 27, u'R'}, kS{1, 39, u'S'}, kT{17, 28, u'T'}, kU{32, 30, u'U'}, kTab{48, 23, u'⇥'},
    kX{7, 53, u'X'}, kY{16, 29, u'Y'}, k1{18, 10, u'1'};
}  // namespace keys

/// Modifier bits as rules store them.
namespace flags {
inline constexpr std::uint64_t kCommand = 0x100000, kLeftCommand = 0x100008,
                               kRightCommand = 0x100010;
/// Shift, Control, Option and Command.
inline constexpr std::uint64_t kAllModifiers = 0x1E0000;
}  // namespace flags

/// Keys that are held down in this order and let go in the reverse one.
struct Chord {
    QString text;
    std::vector<std::uint8_t> keycodes;
};

[[nodiscard]] inline Chord leftCommand(const Key &key) {
    return {QStringLiteral("L⌘") + QChar(key.label), {testing::xkey::kLeftSuper, key.xKeycode}};
}
[[nodiscard]] inline Chord rightCommand(const Key &key) {
    return {QStringLiteral("R⌘") + QChar(key.label), {testing::xkey::kRightSuper, key.xKeycode}};
}
[[nodiscard]] inline Chord shiftCommand(const Key &key) {
    return {QStringLiteral("L⇧L⌘") + QChar(key.label),
            {testing::xkey::kLeftShift, testing::xkey::kLeftSuper, key.xKeycode}};
}
[[nodiscard]] inline Chord plain(const Key &key) {
    return {QString(QChar(key.label)), {key.xKeycode}};
}

}  // namespace kestrelbay::desktop
