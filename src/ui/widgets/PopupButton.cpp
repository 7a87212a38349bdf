#include "ui/widgets/PopupButton.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace kestrelbay {

void PopupButton::showPopup() {
    QAbstractItemView *const list = view();
    // The style says how large the rows are.
    list->ensurePolished();
    const int bar =
        count() > maxVisibleItems() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    list->setMinimumWidth(
        std::min(list->sizeHintForColumn(0) + bar, screen()->availableGeometry().width() / 2));
    // Once only, and before what closes the list: the filter that was installed last is asked
    // first.
    list->installEventFilter(this);
    QComboBox::showPopup();
}

/// Qt closes the list when it asks it whether it has a use for a key. When the window system has
/// not said yet that the list's window has the keyboard, the key press itself then arrives here,
/// and would go on to the sheet.
void PopupButton::keyPressEvent(QKeyEvent *event) {
    if (std::exchange(keyOfList_, std::nullopt) == event->key())
        event->accept();
    else
        QComboBox::keyPressEvent(event);
}

bool PopupButton::eventFilter(QObject *watched, QEvent *event) {
    if (watched == view() && event->type() == QEvent::ShortcutOverride)
        keyOfList_ = static_cast<QKeyEvent *>(event)->key();
    else if (watched == view() && event->type() == QEvent::KeyPress)
        keyOfList_.reset();
    return QComboBox::eventFilter(watched, event);
}

}  // namespace kestrelbay
