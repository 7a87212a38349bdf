#pragma once

#include "platform/ApplicationCatalog.h"

class QScreen;

namespace kestrelbay {

class NativeWindow;

/// The screen at which the user is looking: that of the window which has the
/// keyboard, otherwise the primary one. Null when there is no screen.
[[nodiscard]] QScreen *activeScreen(const NativeWindow &nativeWindow);

/// How icons of this side, in device-independent pixels, are to be read: for the screen
/// with the finest pixels, so that their window may be moved to it. Main thread.
[[nodiscard]] ListIcons listIconsForScreens(int side);

}  // namespace kestrelbay
