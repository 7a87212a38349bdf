#include "ui/look/Screens.h"

#include <algorithm>
#include <cmath>

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>

#include "platform/NativeWindow.h"

namespace kestrelbay {

QScreen *activeScreen(const NativeWindow &nativeWindow) {
    if (const std::optional<QPoint> center = nativeWindow.activeWindowCenter()) {
        // A desktop is laid out in points or in pixels. The points of a screen lie within
        // its own pixels, so they are right for both, but reach not as far.
        for (const bool isInPixels : {false, true}) {
            for (QScreen *screen : QGuiApplication::screens()) {
                QRect place = screen->geometry();
                // Qt scales the sizes of screens, but leaves their corners where they are.
                if (isInPixels)
                    place.setSize(place.size() * screen->devicePixelRatio());
                if (place.contains(*center))
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
