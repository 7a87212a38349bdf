#include "ui/widgets/HelpLinkButton.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

#include "ui/look/Fonts.h"
#include "ui/look/Symbols.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr int kFontSize = 11;
constexpr QSize kSymbol{12, 12};
constexpr int kGap = 4;
/// Around all, for the focus ring.
constexpr QMargins kMargins{3, 3, 4, 3};

}  // namespace

HelpLinkButton::HelpLinkButton(const QString &text, QWidget *parent) : QAbstractButton(parent) {
    setText(text);
    setFont(systemFont(kFontSize));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize HelpLinkButton::sizeHint() const {
    const QSize label = fontMetrics().size(Qt::TextSingleLine, text());
    return QSize(kSymbol.width() + kGap + label.width(), qMax(kSymbol.height(), label.height()))
        .grownBy(kMargins);
}

void HelpLinkButton::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    const QColor ink = underMouse() || hasFocus() ? colors::link() : colors::secondaryLabel();
    const QRect inner = rect().marginsRemoved(kMargins);
    const QRect symbol =
        QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, kSymbol, inner);
    painter.drawPixmap(symbol, symbolPixmap(QStringLiteral("questionmark.circle"), kSymbol, ink,
                                            devicePixelRatioF()));
    painter.setPen(ink);
    painter.drawText(inner, Qt::AlignTrailing | Qt::AlignVCenter | Qt::TextSingleLine, text());

    if (hasFocus()) {
        QStyleOptionFocusRect ring;
        ring.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &ring, &painter, this);
    }
}

}  // namespace kestrelbay
