#include "preferences/window/TabItemView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QStyleOption>

#include "preferences/window/TabBarView.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

namespace {

constexpr int kFontSize = 13;
constexpr qreal kRadius = 6;
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
    if (isSelected_) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors::controlAccent());
        painter.drawRoundedRect(bounds, kRadius, kRadius);
    }
    painter.setPen(isSelected_ ? QColor(Qt::white) : colors::label());
    painter.drawText(bounds, Qt::AlignCenter | Qt::TextSingleLine, title_);

    QStyleOption option;
    option.initFrom(this);
    if (hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
        constexpr qreal kInset = kRingWidth / 2 + 1.5;
        painter.setPen(QPen(isSelected_ ? QColor(Qt::white) : colors::label(), kRingWidth));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(bounds.adjusted(kInset, kInset, -kInset, -kInset), kRadius - kInset,
                                kRadius - kInset);
    }
}

}  // namespace kestrelbay
