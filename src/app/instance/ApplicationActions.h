#pragma once

#include <array>

#include <QLatin1StringView>

namespace kestrelbay::actions {
using namespace Qt::StringLiterals;

// What others may have the program do, by the names that the session bus, the
// command line and the desktop entry use.
inline constexpr QLatin1StringView kToggleAllShortcuts = "toggle-all-shortcuts"_L1;
inline constexpr QLatin1StringView kPreferences = "preferences"_L1;
inline constexpr QLatin1StringView kWelcomeGuide = "welcome-guide"_L1;
inline constexpr QLatin1StringView kAbout = "about"_L1;
inline constexpr QLatin1StringView kQuit = "quit"_L1;

inline constexpr std::array kAll{kToggleAllShortcuts, kPreferences, kWelcomeGuide, kAbout, kQuit};

}  // namespace kestrelbay::actions
