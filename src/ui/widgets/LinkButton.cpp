#include "ui/widgets/LinkButton.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kLinkFontSize = 12;
/// Around the text, for the focus ring and for an easier target.
constexpr QMargins kLinkMargins{8, 4, 8, 4};

}  // namespace

LinkButton::LinkButton(const QString &text, QWidget *parent) : QAbstractButton(parent) {
    setText(text);
    setFont(systemFont(kLinkFontSize));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
    return fontMetrics().size(Qt::TextShowMnemonic, text()).grownBy(kLinkMargins);
}

void LinkButton::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    QColor ink = isEnabled() ? colors::link() : colors::tertiaryLabel();
    if (isDown())
        ink.setAlphaF(ink.alphaF() * 0.6F);
    QFont shown = font();
    shown.setUnderline(isEnabled() && (underMouse() || hasFocus()));
    painter.setFont(shown);
    painter.setPen(ink);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());

    if (hasFocus()) {
        QStyleOptionFocusRect ring;
        ring.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
    }
}

}  // namespace kestrelbay
