#include "ui/look/Screens.h"

#include <algorithm>
#include <cmath>

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

ListIcons listIconsForScreens(int side) {
    qreal ratio = 1;
    for (const QScreen *screen : QGuiApplication::screens())
        ratio = std::max(ratio, screen->devicePixelRatio());
    return {.pixels = static_cast<int>(std::ceil(side * ratio)),
            .themes = {QIcon::themeName(), QIcon::fallbackThemeName()}};
}

}  // namespace kestrelbay
