#include "ui/widgets/ElidedLabel.h"

#include <cmath>

namespace kestrelbay {

ElidedLabel::ElidedLabel(const QFont &font, colors::Function color, Qt::TextElideMode mode,
                         QWidget *parent)
    : TextLabel(QString(), font, color, parent), mode_(mode) {}

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

}  // namespace kestrelbay
