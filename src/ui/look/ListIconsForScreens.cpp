#include "ui/look/ListIconsForScreens.h"

#include <algorithm>
#include <cmath>

#include <QGuiApplication>
#include <QScreen>

namespace kestrelbay {

ListIcons listIconsForScreens(int side) {
    qreal ratio = 1;
    for (const QScreen *screen : QGuiApplication::screens())
        ratio = std::max(ratio, screen->devicePixelRatio());
    return {.pixels = static_cast<int>(std::ceil(side * ratio)),
            .themes = {QIcon::themeName(), QIcon::fallbackThemeName()}};
}

}  // namespace kestrelbay
