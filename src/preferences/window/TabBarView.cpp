#include "preferences/window/TabBarView.h"

#include <algorithm>
#include <utility>

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOption>

#include "settings/L.h"
#include "ui/look/Drawing.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

namespace {

constexpr qreal kBarRadius = 8;
constexpr float kBackgroundAlpha = 0.15F;
/// From the edges to the tabs and from tab to tab.
constexpr qreal kGap = 3;

constexpr int kFontSize = 13;
constexpr qreal kTabRadius = 6;
constexpr qreal kRingWidth = 2;

QFont fontOf(bool selected) {
    return systemFont(kFontSize, selected ? QFont::Medium : QFont::Normal);
}

class AccessibleTab final : public QAccessibleWidget {
public:
    explicit AccessibleTab(TabItemView *item) : QAccessibleWidget(item, QAccessible::PageTab) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = item()->isSelected();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString &name) override {
        if (name == pressAction())
            item()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    [[nodiscard]] TabItemView *item() const { return static_cast<TabItemView *>(widget()); }
};

}  // namespace

TabItemView::TabItemView(const QString &title, TabBarView *bar)
    : QWidget(bar), bar_(*bar), title_(title) {
    installAccessible<TabItemView, AccessibleTab>();
    setAccessibleName(title);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFont(fontOf(false));
}

void TabItemView::setSelected(bool selected) {
    isSelected_ = selected;
    setFont(fontOf(selected));
    setFocusPolicy(selected ? Qt::TabFocus : Qt::NoFocus);
    update();
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void TabItemView::setFrame(const QRectF &frame) {
    frame_ = frame;
    setGeometry(frame.toAlignedRect());
}

void TabItemView::click() {
    bar_.clicked(frame_.center());
}

void TabItemView::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = frame_.translated(-pos());
    if (isSelected_)
        drawRounded(painter, bounds, kTabRadius, colors::controlAccent());
    painter.setPen(isSelected_ ? colors::onAccent() : colors::label());
    painter.drawText(bounds, Qt::AlignCenter | Qt::TextSingleLine, title_);

    QStyleOption option;
    option.initFrom(this);
    if (hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        constexpr qreal kInset = kRingWidth / 2 + 1.5;
        drawRounded(painter, bounds.adjusted(kInset, kInset, -kInset, -kInset), kTabRadius - kInset,
                    Qt::NoBrush, QPen(painter.pen().color(), kRingWidth));
    }
}

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

void TabBarView::select(int index) {
    if (index < 0 || index >= itemViews_.size())
        return;
    const bool moveFocus = itemViews_[selectedIndex_]->hasFocus();
    itemViews_[selectedIndex_]->setSelected(false);
    selectedIndex_ = index;
    itemViews_[index]->setSelected(true);
    if (moveFocus)
        itemViews_[index]->setFocus(Qt::OtherFocusReason);
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
    Q_EMIT onSelect(index);
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
    for (TabItemView *item : std::as_const(itemViews_)) {
        item->setFrame({left, kGap, itemWidth, height() - 2 * kGap});
        left += itemWidth + kGap;
    }
}

void TabBarView::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    drawRounded(painter, rect(), kBarRadius, withAlpha(Qt::black, kBackgroundAlpha));
}

}  // namespace kestrelbay
