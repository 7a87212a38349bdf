#pragma once

#include <QStringView>

namespace kestrelbay {

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
};

[[nodiscard]] const LSystemTexts &macosTexts();
/// Where there is no permission to give, they say what hotkeys need instead.
[[nodiscard]] const LSystemTexts &linuxTexts();

}  // namespace kestrelbay
