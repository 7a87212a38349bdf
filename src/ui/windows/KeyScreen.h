#pragma once

class QScreen;

namespace kestrelbay {

class NativeWindow;

/// The screen at which the user is looking: that of the window which has the
/// keyboard, otherwise the primary one. Null when there is no screen.
[[nodiscard]] QScreen *keyScreen(const NativeWindow &nativeWindow);

}  // namespace kestrelbay
