#include "ui/windows/KeyScreen.h"

#include <QGuiApplication>
#include <QScreen>

#include "platform/NativeWindow.h"

namespace kestrelbay {

namespace {

QRect pointGeometry(const QScreen &screen) {
    return screen.geometry();
}

QRect deviceGeometry(const QScreen &screen) {
    // Qt scales the sizes of screens, but leaves their corners where they are.
    return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

}  // namespace

QScreen *keyScreen(const NativeWindow &nativeWindow) {
    if (const std::optional<QPoint> center = nativeWindow.keyWindowCenter()) {
        // A desktop is laid out in points or in pixels. The points of a screen lie within
        // its own pixels, so they are right for both, but reach not as far.
        for (const auto geometry : {pointGeometry, deviceGeometry}) {
            for (QScreen *screen : QGuiApplication::screens()) {
                if (geometry(*screen).contains(*center))
                    return screen;
            }
        }
    }
    return QGuiApplication::primaryScreen();
}

}  // namespace kestrelbay
