#include "ui/widgets/PopupButton.h"

#include <QAbstractItemView>
#include <QScreen>
#include <QStyle>

#include <algorithm>

namespace kestrelbay {

void PopupButton::showPopup() {
    QAbstractItemView *const list = view();
    // The style says how large the rows are.
    list->ensurePolished();
    const int bar =
        count() > maxVisibleItems() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    list->setMinimumWidth(
        std::min(list->sizeHintForColumn(0) + bar, screen()->availableGeometry().width() / 2));
    QComboBox::showPopup();
}

}  // namespace kestrelbay
