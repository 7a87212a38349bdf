#include "ui/widgets/PaintedButton.h"

#include <QKeyEvent>

namespace kestrelbay {

void PaintedButton::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QAbstractButton::keyPressEvent(event);
        return;
    }
    // A sheet would take the repeats for its primary button.
    event->accept();
    if (!event->isAutoRepeat())
        click();
}

}  // namespace kestrelbay
