#include "ui/widgets/TextLabel.h"

#include <cmath>
#include <utility>

#include <QEvent>
#include <QPainter>

#include "ui/look/WrappedText.h"

namespace kestrelbay {

TextLabel::TextLabel(const QString &text, const QFont &font, colors::Function color,
                     QWidget *parent)
    : QLabel(text, parent), color_(std::move(color)) {
    setTextFormat(Qt::PlainText);
    setFont(font);
    applyColor();
}

void TextLabel::setColor(colors::Function color) {
    color_ = std::move(color);
    applyColor();
}

void TextLabel::changeEvent(QEvent *event) {
    QLabel::changeEvent(event);
    // Our own setPalette() comes back here, once.
    if (event->type() == QEvent::PaletteChange)
        applyColor();
}

void TextLabel::applyColor() {
    QPalette ours = palette();
    ours.setColor(foregroundRole(), color_());
    setPalette(ours);
}

ElidedLabel::ElidedLabel(const QFont &font, colors::Function color, Qt::TextElideMode mode,
                         QWidget *parent)
    : TextLabel(QString(), font, std::move(color), parent), mode_(mode) {}

void ElidedLabel::setFullText(const QString &text) {
    fullText_ = text;
    setAccessibleName(text);
    elide();
}

int ElidedLabel::fullWidth() const {
    return static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(fullText_)));
}

void ElidedLabel::resizeEvent(QResizeEvent *event) {
    TextLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::elide() {
    const QString shown = fontMetrics().elidedText(fullText_, mode_, width());
    setText(shown);
    setToolTip(shown == fullText_ ? QString() : fullText_);
}

WrappingLabel::WrappingLabel(const QString &text, const QFont &font, colors::Function color,
                             QWidget *parent)
    : TextLabel(text, font, std::move(color), parent) {
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
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
    painter.setFont(font());
    painter.drawText(rect(), int(alignment()) | Qt::TextDontClip,
                     balancedLines(text(), font(), width()));
}

}  // namespace kestrelbay
