#include "ui/windows/CenteredWindow.h"

#include <QMarginsF>
#include <QScreen>
#include <QWidget>

#include "platform/NativeWindow.h"
#include "ui/look/Screens.h"

namespace kestrelbay {

namespace {

QMargins frameAround(const QRect &inner, const QRect &outer) {
    return {inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
            outer.bottom() - inner.bottom()};
}

}  // namespace

void centerOnActiveScreen(QWidget &window, const NativeWindow &nativeWindow) {
    QScreen *const screen = activeScreen(nativeWindow);
    if (!screen)
        return;
    // Its pixels may be of another size than those of the screen before.
    window.setScreen(screen);
    const bool wasShown = window.frameGeometry() != window.geometry();
    const QMargins frame =
        wasShown
            ? frameAround(window.geometry(), window.frameGeometry())
            : (QMarginsF(nativeWindow.frameMargins(window.winId())) / window.devicePixelRatioF())
                  .toMargins();
    const QRect available = screen->availableGeometry();
    const QSize room = available.size().shrunkBy(frame);
    if (window.minimumSize() == window.maximumSize()) {
        // It stays one that cannot be resized, which may have another frame.
        window.setFixedSize(window.sizeHint().boundedTo(room));
    } else {
        window.setMinimumSize(window.minimumSize().boundedTo(room));
        window.resize(window.size().boundedTo(room));
    }
    QRect place({}, window.size().grownBy(frame));
    place.moveCenter(available.center());
    // Qt places a window without its frame as long as it does not know that.
    window.move(wasShown ? place.topLeft() : place.marginsRemoved(frame).topLeft());
}

}  // namespace kestrelbay
