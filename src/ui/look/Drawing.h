#pragma once

#include <QColor>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QWidget>

namespace kestrelbay {

/// From 0, which is invisible, to 1.
[[nodiscard]] inline QColor withAlpha(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

/// Smooth, and leaves the painter as it was.
inline void drawRounded(QPainter &painter, const QRectF &rect, qreal radius, const QBrush &ground,
                        const QPen &outline = Qt::NoPen) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(outline);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

/// That of the style, while the control has the focus.
inline void drawFocusRing(QPainter &painter, const QWidget &control) {
    if (!control.hasFocus())
        return;
    QStyleOptionFocusRect ring;
    ring.initFrom(&control);
    control.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, &control);
}

}  // namespace kestrelbay
