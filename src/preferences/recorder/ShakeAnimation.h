#pragma once

#include <QVariantAnimation>

class QWidget;

namespace kestrelbay {

/// Moves a widget to the left and right of where it is and back: 0, −6, 6, −4, 4,
/// −2, 2, 0 px at even times within 0.35 s. Whoever places the widget meanwhile
/// places it where it will be at the end.
class ShakeAnimation : public QVariantAnimation {
    Q_OBJECT

public:
    /// Belongs to the widget.
    explicit ShakeAnimation(QWidget &widget);

    void restart();
    /// Puts the widget back where it belongs.
    void end();

protected:
    void updateCurrentValue(const QVariant &value) override;

private:
    bool eventFilter(QObject *watched, QEvent *event) override;

    QWidget &widget_;
    int offset_ = 0;
    bool isMoving_ = false;
};

}  // namespace kestrelbay
