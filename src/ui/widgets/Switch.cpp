#include "ui/widgets/Switch.h"

#include <QEvent>
#include <QStyleOption>

#include "ui/look/Drawing.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

constexpr QSize kRegularSize{44, 26};
constexpr QSize kSmallSize{38, 20};
constexpr int kRingWidth = 2;
constexpr qreal kKnobInset = 2;
constexpr float kOffAlpha = 0.25F;
constexpr float kOffBorderAlpha = 0.55F;
constexpr float kPressedAlpha = 0.15F;
constexpr float kKnobBorderAlpha = 0.25F;
constexpr qreal kDisabledOpacity = 0.45;

}  // namespace

Switch::Switch(Size size, QWidget *parent) : PaintedButton(parent), size_(size) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    slide_.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&slide_, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        knobPosition_ = value.toReal();
        update();
    });
    connect(this, &QAbstractButton::toggled, this, &Switch::slideKnob);
}

QSize Switch::sizeHint() const {
    return size_ == Size::Small ? kSmallSize : kRegularSize;
}

QRectF Switch::trackRect() const {
    QRectF track(QPointF(0, 0), QSizeF(sizeHint()));
    track.moveCenter(QRectF(rect()).center());
    return track.adjusted(kRingWidth, kRingWidth, -kRingWidth, -kRingWidth);
}

QRectF Switch::knobRect() const {
    const QRectF track = trackRect();
    const qreal extent = track.height() - 2 * kKnobInset;
    const qreal way = track.width() - 2 * kKnobInset - extent;
    const qreal position = isRightToLeft() ? 1 - knobPosition_ : knobPosition_;
    return {track.left() + kKnobInset + way * position, track.top() + kKnobInset, extent, extent};
}

void Switch::slideKnob() {
    const qreal end = isChecked() ? 1 : 0;
    slide_.stop();
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    if (!isVisible() || duration <= 0) {
        knobPosition_ = end;
        update();
        return;
    }
    slide_.setStartValue(knobPosition_);
    slide_.setEndValue(end);
    slide_.setDuration(duration);
    slide_.start();
}

void Switch::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);

    const QRectF track = trackRect();
    const qreal radius = track.height() / 2;
    const QColor on = colors::controlAccent();
    drawRounded(painter, track.adjusted(0.5, 0.5, -0.5, -0.5), radius,
                isChecked() ? on : withAlpha(colors::label(), kOffAlpha),
                isChecked() ? on : withAlpha(colors::label(), kOffBorderAlpha));
    if (isDown())
        drawRounded(painter, track, radius, withAlpha(Qt::black, kPressedAlpha));

    painter.setPen(withAlpha(Qt::black, kKnobBorderAlpha));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knobRect());

    QStyleOption option;
    option.initFrom(this);
    if (hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        // The accent would not be told from a switch that is on.
        const qreal out = kRingWidth / 2.0;
        drawRounded(painter, track.adjusted(-out, -out, out, out), radius + out, Qt::NoBrush,
                    QPen(colors::label(), kRingWidth));
    }
}

void Switch::changeEvent(QEvent *event) {
    PaintedButton::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        update();
}

}  // namespace kestrelbay
