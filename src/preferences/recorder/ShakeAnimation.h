#pragma once

#include <array>

#include <QEvent>
#include <QScopedValueRollback>
#include <QVariantAnimation>
#include <QWidget>

namespace kestrelbay {

/// Moves a widget to the left and right of where it is and back: 0, −6, 6, −4, 4,
/// −2, 2, 0 px at even times within 0.35 s. Whoever places the widget meanwhile
/// places it where it will be at the end.
class ShakeAnimation final : public QVariantAnimation {
public:
    /// Belongs to the widget.
    explicit ShakeAnimation(QWidget &widget) : widget_(widget) {
        constexpr std::array kOffsets{0.0, -6.0, 6.0, -4.0, 4.0, -2.0, 2.0, 0.0};
        setDuration(350);
        for (std::size_t i = 0; i < kOffsets.size(); ++i)
            setKeyValueAt(static_cast<qreal>(i) / (kOffsets.size() - 1), kOffsets[i]);
        widget.installEventFilter(this);
    }

    void restart() {
        stop();
        start();
    }
    /// Puts the widget back where it belongs.
    void end() {
        stop();
        updateCurrentValue(0.0);
    }

protected:
    void updateCurrentValue(const QVariant &value) override {
        const int offset = qRound(value.toReal());
        const QScopedValueRollback moving(isMoving_, true);
        widget_.move(widget_.x() - offset_ + offset, widget_.y());
        offset_ = offset;
    }

private:
    bool eventFilter(QObject *watched, QEvent *event) override {
        // Whoever places the widget does not know of the offset.
        if (event->type() == QEvent::Move && !isMoving_)
            offset_ = 0;
        return QVariantAnimation::eventFilter(watched, event);
    }

    QWidget &widget_;
    int offset_ = 0;
    bool isMoving_ = false;
};

}  // namespace kestrelbay
