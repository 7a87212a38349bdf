#include "ui/widgets/WrappingLabel.h"

#include <QPainter>

#include "ui/look/WrappedText.h"

namespace kestrelbay {

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
    return wrappedTextHeight(text(), font(), width);
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
    drawWrappedText(painter, text(), font(), width());
}

}  // namespace kestrelbay
