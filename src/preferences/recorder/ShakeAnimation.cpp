#include "preferences/recorder/ShakeAnimation.h"

#include <QEvent>
#include <QScopedValueRollback>
#include <QWidget>

#include <array>

namespace kestrelbay {

namespace {

constexpr int kDuration = 350;  // ms
constexpr std::array kOffsets{0.0, -6.0, 6.0, -4.0, 4.0, -2.0, 2.0, 0.0};

}  // namespace

ShakeAnimation::ShakeAnimation(QWidget &widget) : widget_(widget) {
    setDuration(kDuration);
    for (std::size_t i = 0; i < kOffsets.size(); ++i)
        setKeyValueAt(static_cast<qreal>(i) / (kOffsets.size() - 1), kOffsets[i]);
    widget.installEventFilter(this);
}

void ShakeAnimation::restart() {
    stop();
    start();
}

void ShakeAnimation::end() {
    stop();
    updateCurrentValue(0.0);
}

void ShakeAnimation::updateCurrentValue(const QVariant &value) {
    const int offset = qRound(value.toReal());
    const QScopedValueRollback moving(isMoving_, true);
    widget_.move(widget_.x() - offset_ + offset, widget_.y());
    offset_ = offset;
}

bool ShakeAnimation::eventFilter(QObject *watched, QEvent *event) {
    // Whoever places the widget does not know of the offset.
    if (event->type() == QEvent::Move && !isMoving_)
        offset_ = 0;
    return QVariantAnimation::eventFilter(watched, event);
}

}  // namespace kestrelbay
