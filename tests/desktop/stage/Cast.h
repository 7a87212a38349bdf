#pragma once

#include <cstdint>

#include "desktop/display/Keys.h"

namespace kestrelbay::desktop {

/// The programs of Debian's that a story plays with, as there are on the kind of display.
struct Cast {
    struct Role {
        const char *entry;    ///< its desktop entry, without the folder and the suffix
        const char *program;  ///< the name of its program file
        const char *window;   ///< what its windows are called: their class or application id
    };
    Role terminal;
    /// What a rule says behind the terminal's name, and how it arrives, a line each.
    const char *terminalArguments;
    const char *terminalArgumentLines;
    Role otherTerminal;
    Role editor;
    Role files;
    /// Of the hotkeys: the left Command key, or either one where they are not told apart.
    std::uint64_t modifierFlags;
};

inline constexpr Cast kCastOnX{
    .terminal = {.entry = "debian-xterm", .program = "xterm", .window = "XTerm"},
    .terminalArguments = R"(-T "two words" -xrm 'XTerm*kestrel: it\'s')",
    .terminalArgumentLines = "-T\ntwo words\n-xrm\nXTerm*kestrel: it's",
    .otherTerminal = {.entry = "debian-uxterm", .program = "xterm", .window = "UXTerm"},
    .editor = {.entry = "org.xfce.mousepad", .program = "mousepad", .window = "Mousepad"},
    .files = {.entry = "thunar", .program = "thunar", .window = "Thunar"},
    .modifierFlags = flags::kLeftCommand,
};

inline constexpr Cast kCastOnWayland{
    .terminal = {.entry = "foot", .program = "foot", .window = "foot"},
    .terminalArguments = R"(-d error -T 'two words: it\'s')",
    .terminalArgumentLines = "-d\nerror\n-T\ntwo words: it's",
    .otherTerminal = {.entry = "debian-xterm", .program = "xterm", .window = "XTerm"},
    .editor = {.entry = "org.xfce.mousepad", .program = "mousepad", .window = "mousepad"},
    .files = {.entry = "thunar", .program = "thunar", .window = "thunar"},
    .modifierFlags = flags::kCommand,
};

/// Windows' classes are in small letters. foot divides by the size of its screen, which KWin's
/// virtual one has not.
inline constexpr Cast kCastUnderKWin{
    .terminal = {.entry = "org.kde.konsole", .program = "konsole", .window = "org.kde.konsole"},
    .terminalArguments = R"(-p 'tabtitle=two words: it\'s')",
    .terminalArgumentLines = "-p\ntabtitle=two words: it's",
    .otherTerminal = {.entry = "debian-xterm", .program = "xterm", .window = "xterm"},
    .editor = kCastOnWayland.editor,
    .files = kCastOnWayland.files,
    .modifierFlags = flags::kCommand,
};

}  // namespace kestrelbay::desktop
