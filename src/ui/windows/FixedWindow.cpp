#include "ui/windows/FixedWindow.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWindow>

#include "ui/widgets/PlainScrollArea.h"

namespace kestrelbay {

FixedWindow::FixedWindow(QSize size, const QString &title)
    : ProgramWindow(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                    Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                    Qt::MSWindowsFixedSizeDialogHint),
      scrollArea_(new PlainScrollArea(new QWidget, this)) {
    content()->setFixedSize(size);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(scrollArea_);
    setFixedSize(size);
    setWindowTitle(title);
}

QWidget *FixedWindow::content() const {
    return scrollArea_->widget();
}

void FixedWindow::showEvent(QShowEvent *event) {
    ProgramWindow::showEvent(event);
    if (QWidget *const focused = focusWidget(); focused && content()->isAncestorOf(focused))
        scrollArea_->ensureWidgetVisible(focused);
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
