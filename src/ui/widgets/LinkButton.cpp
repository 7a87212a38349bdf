#include "ui/widgets/LinkButton.h"

#include <algorithm>

#include <QStyle>

#include "ui/look/Drawing.h"
#include "ui/look/Fonts.h"
#include "ui/look/Symbols.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

struct Measures {
    int fontSize;
    /// Around all, for the focus ring and for an easier target.
    QMargins margins;
    QSize symbol;
    int symbolToText;
};

constexpr Measures measuresOf(LinkButton::Kind kind) {
    return kind == LinkButton::Kind::Help ? Measures{11, {3, 3, 4, 3}, {12, 12}, 4}
                                          : Measures{12, {8, 4, 8, 4}, {0, 0}, 0};
}

}  // namespace

LinkButton::LinkButton(const QString &text, Kind kind, QWidget *parent)
    : PaintedButton(parent), kind_(kind) {
    setText(text);
    setFont(systemFont(measuresOf(kind).fontSize));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
    const Measures measures = measuresOf(kind_);
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic, text());
    return QSize(measures.symbol.width() + measures.symbolToText + label.width(),
                 std::max(measures.symbol.height(), label.height()))
        .grownBy(measures.margins);
}

void LinkButton::paintEvent(QPaintEvent * /*event*/) {
    const bool isLit = underMouse() || hasFocus();
    QColor ink = isEnabled() ? colors::link() : colors::tertiaryLabel();
    if (kind_ == Kind::Help && !isLit)
        ink = colors::secondaryLabel();
    if (isDown())
        ink.setAlphaF(ink.alphaF() * 0.6F);

    const Measures measures = measuresOf(kind_);
    const QRect inner = rect().marginsRemoved(measures.margins);
    QPainter painter(this);
    if (!measures.symbol.isEmpty()) {
        const QRect place = QStyle::alignedRect(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter,
                                                measures.symbol, inner);
        painter.drawPixmap(place, symbolPixmap(QStringLiteral("questionmark.circle"),
                                               measures.symbol, ink, devicePixelRatioF()));
    }
    QFont shown = font();
    shown.setUnderline(kind_ == Kind::Action && isEnabled() && isLit);
    painter.setFont(shown);
    painter.setPen(ink);
    const Qt::Alignment across = measures.symbol.isEmpty() ? Qt::AlignHCenter : Qt::AlignTrailing;
    painter.drawText(inner, int(across | Qt::AlignVCenter) | Qt::TextShowMnemonic, text());

    drawFocusRing(painter, *this);
}

}  // namespace kestrelbay
