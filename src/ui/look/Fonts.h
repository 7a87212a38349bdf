#pragma once

#include <QFont>
#include <QGuiApplication>

namespace kestrelbay {

/// The user's interface font at a size in device-independent pixels.
[[nodiscard]] inline QFont systemFont(int pixelSize, QFont::Weight weight = QFont::Normal) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

}  // namespace kestrelbay
