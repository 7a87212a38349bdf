#include "ui/widgets/WrappingLabel.h"

#include <cmath>

#include <QPainter>
#include <QTextLayout>

namespace kestrelbay {

namespace {

/// Gives back the height of all lines.
qreal breakIntoLines(QTextLayout &layout, const QLabel &label, qreal width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(label.layoutDirection());
    layout.setTextOption(option);
    qreal height = 0;
    layout.beginLayout();
    while (true) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

}  // namespace

WrappingLabel::WrappingLabel(const QString &text, const QFont &font, colors::Function color,
                             QWidget *parent)
    : TextLabel(text, font, color, parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

bool WrappingLabel::hasHeightForWidth() const {
    return true;
}

int WrappingLabel::heightForWidth(int width) const {
    QTextLayout layout(text(), font(), this);
    return static_cast<int>(std::ceil(breakIntoLines(layout, *this, width)));
}

QSize WrappingLabel::sizeHint() const {
    const QFontMetrics metrics(font(), this);
    return {metrics.horizontalAdvance(text()) + 1, metrics.height()};
}

QSize WrappingLabel::minimumSizeHint() const {
    const QFontMetrics metrics(font(), this);
    return {metrics.averageCharWidth(), metrics.height()};
}

void WrappingLabel::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    QTextLayout layout(text(), font(), this);
    breakIntoLines(layout, *this, width());
    layout.draw(&painter, {});
}

}  // namespace kestrelbay
