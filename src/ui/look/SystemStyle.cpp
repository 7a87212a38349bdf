#include "ui/look/SystemStyle.h"

#include <QAbstractItemView>
#include <QFrame>
#include <QPalette>
#include <QStyleFactory>
#include <QStyleOption>
#include <QStyledItemDelegate>

#include <algorithm>

#include "ui/look/Contrast.h"
#include "ui/look/Drawing.h"
#include "ui/look/Symbols.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr qreal kRadius = 6;
constexpr int kFocusRingWidth = 2;
constexpr int kScrollBarExtent = 11;
constexpr QSize kChevron{9, 9};
constexpr int kChevronMargin = 8;
constexpr int kLineEditMargin = 6;
constexpr int kMenuItemPadding = 6;
constexpr int kPushButtonPadding = 12;
constexpr int kSmallPushButtonMargin = 10;
/// Around the list of a popup and around each of its titles.
constexpr int kListFrame = 5;
constexpr QSize kListItemPadding{7, 4};
constexpr qreal kListItemRadius = 4;
/// Controls with a text up to this size are small ones.
constexpr int kSmallFont = 12;
constexpr int kRegularHeight = 28;
constexpr int kSmallHeight = 24;

QRectF hairlineRect(const QRect &rect) {
    return QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
}

bool has(const QStyleOption &option, QStyle::StateFlag flag) {
    return option.state.testFlag(flag);
}

/// The line around a control, as thick as `alpha` says on its ground.
QColor outline(const QColor &ground, qreal alpha) {
    constexpr qreal kInHighContrast = 0.65;
    return overlaid(ground, colors::label(), colors::isContrastHigh() ? kInHighContrast : alpha);
}

QColor faceOf(const QStyleOption &option, const QColor &face) {
    if (!has(option, QStyle::State_Enabled))
        return overlaid(face, option.palette.color(QPalette::Window), 0.5);
    if (has(option, QStyle::State_Sunken))
        return overlaid(face, Qt::black, colors::isDark() ? 0.25 : 0.12);
    if (has(option, QStyle::State_MouseOver))
        return overlaid(face, colors::isDark() ? Qt::white : Qt::black, 0.04);
    return face;
}

void drawFace(const QStyleOption &option, const QColor &face, bool framed, QPainter *painter) {
    drawRounded(*painter, hairlineRect(option.rect), kRadius, face,
                framed ? outline(face, 0.18) : face);
    if (has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange)) {
        const float alpha = colors::isContrastHigh() ? 1 : 0.7F;
        const QColor ring = framed ? withAlpha(colors::focusRing(), alpha) : colors::label();
        drawRounded(*painter, option.rect.adjusted(1, 1, -1, -1), kRadius - 1, Qt::NoBrush,
                    QPen(ring, kFocusRingWidth));
    }
}

bool hasFeature(const QStyleOption &option, QStyleOptionButton::ButtonFeature feature) {
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    return button && button->features.testFlag(feature);
}

bool isDefault(const QStyleOption &option) {
    return hasFeature(option, QStyleOptionButton::DefaultButton);
}

void drawPushButton(const QStyleOption &option, QPainter *painter) {
    if (hasFeature(option, QStyleOptionButton::Flat) && !has(option, QStyle::State_Sunken) &&
        !has(option, QStyle::State_HasFocus))
        return;
    const bool filled = isDefault(option) && has(option, QStyle::State_Enabled);
    const QColor face =
        option.palette.color(QPalette::Active, filled ? QPalette::Highlight : QPalette::Button);
    drawFace(option, faceOf(option, face), !filled, painter);
}

void drawLineEdit(const QStyleOption &option, QPainter *painter) {
    const bool focused = has(option, QStyle::State_HasFocus);
    const qreal inset = focused ? 1 : 0.5;
    drawRounded(
        *painter, QRectF(option.rect).adjusted(inset, inset, -inset, -inset), kRadius,
        option.palette.color(QPalette::Base),
        focused ? QPen(colors::focusRing(), kFocusRingWidth) : outline(colors::field(), 0.22));
}

/// A radio button's disc or a check box, filled with the accent while it is on.
void drawIndicator(const QStyleOption &option, qreal radius, QPainter *painter) {
    const bool on = has(option, QStyle::State_On) && has(option, QStyle::State_Enabled);
    const QColor face =
        on ? colors::controlAccent() : option.palette.color(QPalette::Active, QPalette::Button);
    drawRounded(*painter, hairlineRect(option.rect), radius, faceOf(option, face),
                on ? face : outline(face, 0.3));
}

QColor markInk(const QStyleOption &option) {
    return has(option, QStyle::State_Enabled) ? colors::onAccent() : colors::tertiaryLabel();
}

void drawRadioButton(const QStyleOption &option, QPainter *painter) {
    drawIndicator(option, option.rect.width() / 2.0, painter);
    if (!has(option, QStyle::State_On))
        return;
    const qreal dot = option.rect.width() * 0.19;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(markInk(option));
    painter->drawEllipse(QRectF(option.rect).center(), dot, dot);
    painter->restore();
}

void drawCheckBox(const QStyleOption &option, QPainter *painter) {
    drawIndicator(option, 3, painter);
    if (!has(option, QStyle::State_On))
        return;
    const QRectF box(option.rect);
    const auto at = [&box](qreal x, qreal y) {
        return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
    };
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(markInk(option), 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(QPolygonF({at(0.25, 0.53), at(0.43, 0.71), at(0.76, 0.31)}));
    painter->restore();
}

void drawMenuSeparator(const QStyleOption &option, QPainter *painter) {
    painter->fillRect(QRect(option.rect.left() + kMenuItemPadding, option.rect.center().y(),
                            option.rect.width() - 2 * kMenuItemPadding, 1),
                      colors::separator());
}

bool isMenuSeparator(const QStyleOption &option) {
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(&option);
    return item && item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty();
}

void drawFocusRing(const QStyleOption &option, QPainter *painter) {
    if (has(option, QStyle::State_KeyboardFocusChange))
        drawRounded(*painter, option.rect.adjusted(1, 1, -1, -1), kRadius - 2, Qt::NoBrush,
                    QPen(colors::focusRing(), kFocusRingWidth));
}

void drawComboBox(const QStyleOptionComboBox &option, QPainter *painter) {
    QStyleOptionComboBox face = option;
    // A popup is pressed while its menu is open, which covers it.
    face.state &= ~QStyle::State_On;
    drawFace(face, faceOf(face, face.palette.color(QPalette::Active, QPalette::Button)), true,
             painter);
    const QColor ink =
        has(option, QStyle::State_Enabled) ? colors::secondaryLabel() : colors::tertiaryLabel();
    const QRect area = option.rect.adjusted(0, 0, -kChevronMargin, 0);
    const QRect place =
        QStyle::alignedRect(option.direction, Qt::AlignRight | Qt::AlignVCenter, kChevron, area);
    painter->drawPixmap(place, symbolPixmap(QStringLiteral("chevron.down"), kChevron, ink,
                                            painter->device()->devicePixelRatioF()));
}

void drawScrollBar(const QStyle &style, const QStyleOptionSlider &option, QPainter *painter,
                   const QWidget *widget) {
    if (option.maximum <= option.minimum)
        return;
    const QRect handle =
        style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, widget);
    const bool isUsed = has(option, QStyle::State_Sunken) || has(option, QStyle::State_MouseOver);
    const QRectF bar = handle.adjusted(2, 2, -2, -2);
    drawRounded(*painter, bar, std::min(bar.width(), bar.height()) / 2,
                withAlpha(colors::label(), isUsed ? 0.45F : 0.28F));
}

/// What Qt shows the list of a combo box in; both classes are its own.
bool isPopupFrame(const QWidget *widget) {
    return widget && widget->inherits("QComboBoxPrivateContainer");
}

bool isPopupList(const QWidget *widget) {
    return widget && widget->inherits("QComboBoxListView");
}

void drawPopupFrame(const QStyleOption &option, QPainter *painter) {
    const QColor ground = option.palette.color(QPalette::Base);
    painter->save();
    painter->setPen(outline(ground, 0.18));
    painter->setBrush(ground);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

bool isSmall(const QWidget *widget) {
    return widget && widget->font().pixelSize() > 0 && widget->font().pixelSize() <= kSmallFont;
}

int controlHeight(const QWidget *widget) {
    return isSmall(widget) ? kSmallHeight : kRegularHeight;
}

}  // namespace

SystemStyle::SystemStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void SystemStyle::polish(QWidget *widget) {
    QProxyStyle::polish(widget);
    // The delegate that a combo box comes with asks no style how large its rows are.
    if (isPopupList(widget)) {
        auto *const list = static_cast<QAbstractItemView *>(widget);
        list->setItemDelegate(new QStyledItemDelegate(list));
    }
}

void SystemStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                QPainter *painter, const QWidget *widget) const {
    switch (element) {
        case PE_PanelButtonCommand:
            return drawPushButton(*option, painter);
        case PE_PanelLineEdit:
            return drawLineEdit(*option, painter);
        case PE_FrameFocusRect:
            return drawFocusRing(*option, painter);
        case PE_Frame:
            if (isPopupFrame(widget))
                return drawPopupFrame(*option, painter);
            break;
        case PE_PanelItemViewItem:
            if (!isPopupList(widget))
                break;
            if (has(*option, State_Selected))
                drawRounded(*painter, option->rect, kListItemRadius,
                            option->palette.color(QPalette::Highlight));
            return;
        case PE_IndicatorRadioButton:
            return drawRadioButton(*option, painter);
        case PE_IndicatorCheckBox:
            return drawCheckBox(*option, painter);
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void SystemStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                              const QWidget *widget) const {
    if (element == CE_PushButtonLabel && isDefault(*option) && has(*option, State_Enabled)) {
        QStyleOptionButton onAccent = *qstyleoption_cast<const QStyleOptionButton *>(option);
        onAccent.palette.setColor(QPalette::ButtonText,
                                  onAccent.palette.color(QPalette::HighlightedText));
        return QProxyStyle::drawControl(element, &onAccent, painter, widget);
    }
    if (element == CE_MenuItem && isMenuSeparator(*option))
        return drawMenuSeparator(*option, painter);
    const auto *const item = qstyleoption_cast<const QStyleOptionViewItem *>(option);
    if (element == CE_ItemViewItem && item && has(*item, State_Selected)) {
        // The accent tells already, and a ring would lie upon the letters.
        QStyleOptionViewItem ringless = *item;
        ringless.state &= ~State_HasFocus;
        return QProxyStyle::drawControl(element, &ringless, painter, widget);
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void SystemStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                     QPainter *painter, const QWidget *widget) const {
    if (const auto *combo = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        control == CC_ComboBox && combo && !combo->editable)
        return drawComboBox(*combo, painter);
    if (const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
        control == CC_ScrollBar && slider)
        return drawScrollBar(*proxy(), *slider, painter, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QSize SystemStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                    const QSize &contents, const QWidget *widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_PushButton || type == CT_ComboBox || type == CT_LineEdit)
        size.setHeight(controlHeight(widget));
    // Fusion makes even the shortest button 80 wide.
    if (type == CT_PushButton)
        size.setWidth(isSmall(widget) ? contents.width() + 2 * kSmallPushButtonMargin
                                      : size.width() + kPushButtonPadding);
    if (type == CT_MenuItem && !isMenuSeparator(*option))
        size.rheight() += kMenuItemPadding;
    if (type == CT_ItemViewItem && isPopupList(widget))
        size.rheight() += 2 * kListItemPadding.height();
    return size;
}

QRect SystemStyle::subElementRect(SubElement element, const QStyleOption *option,
                                  const QWidget *widget) const {
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    return element == SE_LineEditContents ? rect.adjusted(kLineEditMargin, 0, -kLineEditMargin, 0)
                                          : rect;
}

int SystemStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                             const QWidget *widget) const {
    switch (metric) {
        case PM_ScrollBarExtent:
            return kScrollBarExtent;
        case PM_DefaultFrameWidth:
            return isPopupFrame(widget) ? kListFrame
                                        : QProxyStyle::pixelMetric(metric, option, widget);
        case PM_FocusFrameHMargin:
            return isPopupList(widget) ? kListItemPadding.width()
                                       : QProxyStyle::pixelMetric(metric, option, widget);
        // Focus is a ring inside the button, a default button one filled with the accent.
        case PM_ButtonDefaultIndicator:
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int SystemStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *returned) const {
    switch (hint) {
        // A list below the control, as long as it needs, not a menu over it.
        case SH_ComboBox_Popup:
        case SH_DialogButtonBox_ButtonsHaveIcons:
            return 0;
        case SH_ComboBox_PopupFrameStyle:
            return static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Plain);
        default:
            return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

}  // namespace kestrelbay
