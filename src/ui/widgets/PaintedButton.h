#pragma once

#include <QAbstractButton>

namespace kestrelbay {

/// A button that paints itself. Space presses it when it is let go, Return and Enter at once.
class PaintedButton : public QAbstractButton {
    Q_OBJECT

public:
    using QAbstractButton::QAbstractButton;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

}  // namespace kestrelbay
