#pragma once

#include <vector>

#include <QString>

#include "settings/LSystemTexts.h"

namespace kestrelbay {

/// A text that is the same on every system.
struct LMember {
    QString (*text)();
    QString english;
    QString chinese;
};

/// One that differs between systems, as it reads on macOS.
struct LSystemMember {
    QString (*text)();
    LText LSystemTexts::*pair;
    QString english;
    QString chinese;
};

/// All texts of a part of the program that stand alone.
struct LTexts {
    std::vector<LMember> members;
    std::vector<LSystemMember> systemMembers;
};

/// Of the guide, the menu, and the small windows.
[[nodiscard]] LTexts shellTexts();
/// Of the preferences and their sheets.
[[nodiscard]] LTexts preferencesTexts();

}  // namespace kestrelbay
