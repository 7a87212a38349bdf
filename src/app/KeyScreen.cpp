#include "app/KeyScreen.h"

#include <QGuiApplication>
#include <QScreen>

#include "platform/NativeWindow.h"

namespace kestrelbay {

namespace {

QRect deviceGeometry(const QScreen &screen) {
    // Qt scales the sizes of screens, but leaves their corners where they are.
    return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

}  // namespace

QScreen *keyScreen(const NativeWindow &nativeWindow) {
    if (const std::optional<QPoint> center = nativeWindow.keyWindowCenter()) {
        for (QScreen *screen : QGuiApplication::screens()) {
            if (deviceGeometry(*screen).contains(*center))
                return screen;
        }
    }
    return QGuiApplication::primaryScreen();
}

}  // namespace kestrelbay
