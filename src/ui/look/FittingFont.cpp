#include "ui/look/FittingFont.h"

#include <QFont>
#include <QFontMetrics>

namespace kestrelbay {

namespace {

constexpr int kSmallest = 10;

}  // namespace

QFont fittingFont(const QString &text, QFont font, int width) {
    while (font.pixelSize() > kSmallest && QFontMetrics(font).horizontalAdvance(text) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

}  // namespace kestrelbay
