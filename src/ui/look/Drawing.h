#pragma once

#include <QBrush>
#include <QColor>
#include <QPainter>
#include <QPen>

namespace kestrelbay {

/// From 0, which is invisible, to 1.
[[nodiscard]] inline QColor withAlpha(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

/// Smooth, and leaves the painter as it was.
void drawRounded(QPainter &painter, const QRectF &rect, qreal radius, const QBrush &ground,
                 const QPen &outline = Qt::NoPen);

/// That of the style, while the control has the focus.
void drawFocusRing(QPainter &painter, const QWidget &control);

}  // namespace kestrelbay
