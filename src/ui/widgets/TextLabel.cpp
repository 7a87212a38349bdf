#include "ui/widgets/TextLabel.h"

#include <QEvent>

namespace kestrelbay {

TextLabel::TextLabel(const QString &text, const QFont &font, colors::Function color,
                     QWidget *parent)
    : QLabel(text, parent), color_(color) {
    setTextFormat(Qt::PlainText);
    setFont(font);
    applyColor();
}

void TextLabel::setColor(colors::Function color) {
    color_ = color;
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

}  // namespace kestrelbay
