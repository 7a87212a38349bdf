#include "ui/windows/FixedWindow.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

namespace kestrelbay {

FixedWindow::FixedWindow(QSize size, const QString &title)
    : ProgramWindow(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                    Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                    Qt::MSWindowsFixedSizeDialogHint) {
    setFixedSize(size);
    setWindowTitle(title);
}

void FixedWindow::closeEvent(QCloseEvent *event) {
    event->accept();
    if (const auto handler = closeHandler_)  // which may set another one
        handler();
}

void FixedWindow::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Cancel) || event->matches(QKeySequence::Close))
        close();
    else if (auto *button = qobject_cast<QAbstractButton *>(focusWidget());
             button && !event->isAutoRepeat() &&
             (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        button->click();
    else
        ProgramWindow::keyPressEvent(event);
}

void FixedWindow::mousePressEvent(QMouseEvent *event) {
    if (isMovableByBackground_ && event->button() == Qt::LeftButton)
        windowHandle()->startSystemMove();
    else
        ProgramWindow::mousePressEvent(event);
}

}  // namespace kestrelbay
