#pragma once

#include <vector>

#include <QString>

#include "desktop/session/HomeFolder.h"
#include "desktop/session/RulesFile.h"
#include "desktop/stage/Cast.h"

namespace kestrelbay::desktop {

/// What is bound to the keys, none of which a window manager holds by default beside the
/// Super key, and the words by which its work is known.
namespace scenario {
inline constexpr Key kTerminal = keys::kN, kTerminalEitherSide = keys::kG,
                     kTerminalCycle = keys::kS, kOtherTerminal = keys::kJ,
                     kTerminalArguments = keys::kR, kEditorToggle = keys::kE,
                     kEditorCycle = keys::kC, kEditorFile = keys::kI, kFiles = keys::kF,
                     kFilesFolder = keys::kO, kUrl = keys::kU, kArguments = keys::kA,
                     kDisabled = keys::kX, kMarker = keys::kK;

inline constexpr const char *kTerminalClass = "XTerm";
inline constexpr const char *kOtherTerminalClass = "UXTerm";
inline constexpr const char *kEditorClass = "Mousepad";
inline constexpr const char *kFilesClass = "Thunar";
inline constexpr const char *kUrlText = "kestreltest://hello/there?x=1&y=a%20b";
inline constexpr const char *kMarkerArgument = "--marker";
inline constexpr const char *kDisabledArgument = "--disabled";
inline constexpr const char *kMarkerName = "Marker";
inline constexpr const char *kFileName = "first-note.txt";
inline constexpr const char *kFolderName = "pictures";
}  // namespace scenario

/// Rules of every repeat action and every argument kind.
[[nodiscard]] std::vector<RuleSpec> scenarioRules(const HomeFolder &home, const Cast &cast);

}  // namespace kestrelbay::desktop
