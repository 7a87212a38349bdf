#include "preferences/window/TabBarView.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "preferences/window/TabItemView.h"
#include "settings/L.h"
#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

namespace {

constexpr qreal kBarRadius = 8;
constexpr float kBackgroundAlpha = 0.15F;
/// From the edges to the tabs and from tab to tab.
constexpr qreal kGap = 3;

}  // namespace

TabBarView::TabBarView(QWidget *parent) : QWidget(parent) {
    installAccessible<TabBarView, AccessibleWithRole<QAccessible::PageTabList>>();
    for (const QString &label : labels()) {
        auto *const item = new TabItemView(label, this);
        item->setObjectName(QStringLiteral("tab%1").arg(itemViews_.size()));
        itemViews_.push_back(item);
    }
    itemViews_.front()->setSelected(true);
}

QStringList TabBarView::labels() {
    return {L::rulesTab(), L::advancedTab()};
}

void TabBarView::setOnSelect(std::function<void(int)> onSelect) {
    onSelect_ = std::move(onSelect);
}

void TabBarView::select(int index) {
    if (index < 0 || std::cmp_greater_equal(index, itemViews_.size()))
        return;
    const auto item = [this](int at) { return itemViews_[static_cast<std::size_t>(at)]; };
    const bool moveFocus = item(selectedIndex_)->hasFocus();
    item(selectedIndex_)->setSelected(false);
    selectedIndex_ = index;
    item(index)->setSelected(true);
    if (moveFocus)
        item(index)->setFocus(Qt::OtherFocusReason);
}

std::optional<int> TabBarView::indexAt(QPointF location) const {
    const auto found = std::ranges::find_if(
        itemViews_, [&](const TabItemView *item) { return item->frame().contains(location); });
    if (found == itemViews_.end())
        return std::nullopt;
    return static_cast<int>(found - itemViews_.begin());
}

void TabBarView::clicked(QPointF location) {
    if (const std::optional<int> index = indexAt(location))
        choose(*index);
}

void TabBarView::choose(int index) {
    select(index);
    if (const auto onSelect = onSelect_)
        onSelect(index);
}

void TabBarView::mousePressEvent(QMouseEvent *event) {
    pressedIndex_ = event->button() == Qt::LeftButton ? indexAt(event->position()) : std::nullopt;
}

void TabBarView::mouseReleaseEvent(QMouseEvent *event) {
    // A press that is drawn away before it is let go is taken back.
    const std::optional<int> pressed = std::exchange(pressedIndex_, std::nullopt);
    if (pressed && indexAt(event->position()) == pressed)
        clicked(event->position());
}

void TabBarView::keyPressEvent(QKeyEvent *event) {
    const int last = static_cast<int>(itemViews_.size()) - 1;
    int index = selectedIndex_;
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Up:
            index = std::max(index - 1, 0);
            break;
        case Qt::Key_Right:
        case Qt::Key_Down:
            index = std::min(index + 1, last);
            break;
        case Qt::Key_Home:
            index = 0;
            break;
        case Qt::Key_End:
            index = last;
            break;
        default:
            QWidget::keyPressEvent(event);
            return;
    }
    if (index != selectedIndex_)
        choose(index);
}

void TabBarView::resizeEvent(QResizeEvent * /*event*/) {
    const auto count = static_cast<qreal>(itemViews_.size());
    const qreal itemWidth = (width() - kGap * (count + 1)) / count;
    qreal left = kGap;
    for (TabItemView *item : itemViews_) {
        item->setFrame({left, kGap, itemWidth, height() - 2 * kGap});
        left += itemWidth + kGap;
    }
}

void TabBarView::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, kBackgroundAlpha));
    painter.drawRoundedRect(rect(), kBarRadius, kBarRadius);
}

}  // namespace kestrelbay
