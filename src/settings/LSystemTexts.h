#pragma once

#include <cstdint>

#include <QStringView>

namespace kestrelbay {

enum class TapProblem : std::uint8_t;

/// One text in both languages.
struct LText {
    QStringView english;
    QStringView chinese;
};

/// The texts that name a place or a permission of the system, and so read
/// differently on each. Behind L, which shows those of the system it is built for.
struct LSystemTexts {
    LText recorderNoAccess;
    LText recorderGrantAccess;
    LText welcomeTip;
    LText permissionTitle;
    LText permissionBody;
    LText permissionOpenSettings;
    LText permissionWaiting;
    LText doneBody;
    LText doneWithoutPermissionBody;
    LText argumentFilePathHint;
    LText launchAtLoginText;
    LText configFolderShow;
    LText accessTitle;
    LText accessGranted;
    LText accessOpenSettings;
    /// By what is missing. The first also stands for what is not listed.
    LText accessNotPermitted;
    LText accessWaylandSession;
    LText accessNoDisplay;
    LText accessNoInputExtension;
    LText accessOtherInstance;
};

[[nodiscard]] const LSystemTexts &macosTexts();
/// Where there is no permission to give, they say what hotkeys need instead.
[[nodiscard]] const LSystemTexts &linuxTexts();

/// Those of the system this program is built for.
[[nodiscard]] const LSystemTexts &systemTexts();

/// Why hotkeys do not work, and what to do about it.
[[nodiscard]] const LText &accessMissing(const LSystemTexts &texts, TapProblem problem);

}  // namespace kestrelbay
