#include "ui/list/RowDrop.h"

#include <QPainter>
#include <QRegularExpression>

#include <algorithm>

#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kAutoscrollMargin = 32;
/// At 60 ticks a second about twenty rows.
constexpr int kFastestAutoscroll = 18;

constexpr qreal kLineThickness = 2;
constexpr qreal kLineEndRadius = 3;

}  // namespace

std::optional<int> gapAt(int y, int pitch, int rows) {
    if (y < 0 || y >= rows * pitch)
        return y < 0 ? 0 : rows;
    const int row = y / pitch;
    const int within = y % pitch;
    if (within < pitch / 4)
        return row;
    return within >= pitch - pitch / 4 ? std::optional(row + 1) : std::nullopt;
}

QString textOfDraggedRow(int row) {
    return QString::number(row);
}

std::optional<std::ptrdiff_t> draggedRow(QStringView text) {
    // Numbers with spaces around them are numbers to toLongLong().
    static const QRegularExpression number(QStringLiteral("\\A[+-]?[0-9]+\\z"));
    bool isNumber = false;
    const std::ptrdiff_t row = text.toLongLong(&isNumber);
    return isNumber && number.match(text.toString()).hasMatch() ? std::optional(row) : std::nullopt;
}

std::ptrdiff_t dropDestination(std::ptrdiff_t source, std::ptrdiff_t gap) {
    return source < gap ? gap - 1 : gap;
}

int autoscrollStep(int y, int viewHeight) {
    const int below = viewHeight - 1 - y;
    const int nearness = std::min(kAutoscrollMargin - std::min(y, below), kAutoscrollMargin);
    // In a list too low for two margins the nearer edge wins.
    if (nearness <= 0 || y == below)
        return 0;
    const int step = std::max(1, kFastestAutoscroll * nearness / kAutoscrollMargin);
    return y < below ? -step : step;
}

DropLine::DropLine(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void DropLine::showAt(int y, int left, int width) {
    const int lowest = std::max(0, parentWidget()->height() - kHeight);
    setGeometry(left, std::clamp(y - kHeight / 2, 0, lowest), width, kHeight);
    raise();
    show();
}

void DropLine::paintEvent(QPaintEvent *) {
    const qreal middle = kHeight / 2.0;
    const qreal ringEnd = kLineThickness / 2 + 2 * kLineEndRadius;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors::controlAccent(), kLineThickness, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QPointF(kLineThickness / 2 + kLineEndRadius, middle), kLineEndRadius,
                        kLineEndRadius);
    painter.drawLine(QPointF(ringEnd, middle), QPointF(width() - kLineThickness / 2, middle));
}

}  // namespace kestrelbay
