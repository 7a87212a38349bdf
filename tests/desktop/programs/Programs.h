#pragma once

#include <array>

#include "desktop/display/Keys.h"
#include "desktop/stage/Stage.h"

namespace kestrelbay::desktop {

/// An ordinary program of Debian, and how it is known on a desktop.
struct OrdinaryProgram {
    const char *name;
    const char *toolkit;
    const char *entry;  ///< below /usr/share/applications, without its ending
    const char *title;  ///< a part of its window's, which tells it from a splash screen
    const char *runs;   ///< the executable of its process, or the path of its script
    Key key;
};

inline constexpr std::array kPrograms{
    OrdinaryProgram{"Galculator", "GTK 3", "galculator", "galculator", "galculator", keys::kA},
    OrdinaryProgram{"Calculator", "GTK 4", "org.gnome.Calculator", "Calculator", "gnome-calculator",
                    keys::kC},
    OrdinaryProgram{"FeatherPad", "Qt 5", "featherpad", "Untitled", "featherpad", keys::kE},
    OrdinaryProgram{"KCalc", "Qt 5 with KDE's libraries", "org.kde.kcalc", "KCalc", "kcalc",
                    keys::kF},
    OrdinaryProgram{"jEdit", "Swing", "jedit", "jEdit - ", "java", keys::kG},
    OrdinaryProgram{"IDLE", "Tk", "idle", "IDLE Shell", "/usr/bin/idle", keys::kI},
    OrdinaryProgram{"Falkon", "Chromium in Qt WebEngine", "org.kde.falkon", "Falkon", "falkon",
                    keys::kN},
    OrdinaryProgram{"Xfig", "Athena widgets", "xfig", "Xfig 3", "xfig", keys::kO},
    OrdinaryProgram{"htop", "a terminal", "htop", "", "htop", keys::kR},
    OrdinaryProgram{"mc", "a terminal", "mc", "", "mc", keys::kS},
};

/// Rules that show and hide each of them, and the marker's.
[[nodiscard]] std::vector<RuleSpec> programRules(const HomeFolder &home);

/// Launched, brought forward from behind, hidden and shown again, and started only once.
void showsOneProgram(Stage &stage, const OrdinaryProgram &program);

}  // namespace kestrelbay::desktop
