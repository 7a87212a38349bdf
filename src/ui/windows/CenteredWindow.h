#pragma once

class QWidget;

namespace kestrelbay {

class NativeWindow;

/// Puts a window, with the frame it has or will get, in the middle of what no panel of the
/// desktop takes of the screen at which the user looks; made smaller where it would not fit
/// there, than its smallest size if need be; one of a fixed size has that of its sizeHint()
/// otherwise. Without a screen it stays where it is.
void centerOnActiveScreen(QWidget &window, const NativeWindow &nativeWindow);

}  // namespace kestrelbay
