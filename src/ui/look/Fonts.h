#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>

namespace kestrelbay {

/// The user's interface font at a size in device-independent pixels.
[[nodiscard]] inline QFont systemFont(int pixelSize, QFont::Weight weight = QFont::Normal) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

/// The font, or where the text would be wider than `width` (in device-independent
/// pixels) the largest smaller one in which it is not. Never below 10 pixels.
[[nodiscard]] inline QFont fittingFont(const QString &text, QFont font, int width) {
    constexpr int kSmallest = 10;
    while (font.pixelSize() > kSmallest && QFontMetrics(font).horizontalAdvance(text) > width)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

}  // namespace kestrelbay
