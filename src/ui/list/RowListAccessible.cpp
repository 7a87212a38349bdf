#include <map>

#include "ui/list/RowListView.h"
#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

namespace {

class RowAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    RowAccessible(RowListView *list, int row) : list_(list), row_(row) {}

    [[nodiscard]] int row() const { return row_; }

    [[nodiscard]] bool isValid() const override { return index().isValid(); }
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QWindow *window() const override { return parent()->window(); }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessibleInterface *parent() const override {
        return QAccessible::queryAccessibleInterface(list_);
    }
    [[nodiscard]] int childCount() const override { return list_->rowWidget(row_) ? 1 : 0; }
    [[nodiscard]] QAccessibleInterface *child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(list_->rowWidget(row_)) : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return child(0); }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *thing) const override {
        return thing && thing == child(0) ? 0 : -1;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? index().data(Qt::AccessibleTextRole).toString()
                                         : QString();
    }
    void setText(QAccessible::Text, const QString &) override {}
    [[nodiscard]] QRect rect() const override {
        const auto *const rows = static_cast<RowDelegate *>(list_->itemDelegate());
        const QRect rect = rows->rowRect(list_->visualRect(index()));
        return {list_->viewport()->mapToGlobal(rect.topLeft()), rect.size()};
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        state.offscreen = !list_->viewport()->rect().intersects(list_->visualRect(index()));
        state.invisible = !list_->isVisible();
        state.focusable = true;
        state.selectable = true;
        state.selected = list_->selectedRow() == row_;
        state.focused = state.selected && list_->hasFocus();
        return state;
    }

    void *interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface
                   ? static_cast<QAccessibleActionInterface *>(this)
                   : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return {pressAction(), setFocusAction()};
    }
    void doAction(const QString &action) override {
        if (!actionNames().contains(action))
            return;
        list_->scrollToRow(row_);
        list_->selectRow(row_);
        list_->setFocus();
        if (action == pressAction())
            Q_EMIT list_->activated(index());
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    [[nodiscard]] QModelIndex index() const { return list_->model()->index(row_, 0); }

    RowListView *list_;
    int row_;
};

class RowListAccessible final : public QAccessibleWidget {
public:
    explicit RowListAccessible(RowListView *list)
        : QAccessibleWidget(list, QAccessible::List), list_(list) {}
    ~RowListAccessible() override {
        for (const auto &[row, id] : rows_)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return list_->model()->rowCount(); }
    [[nodiscard]] QAccessibleInterface *child(int row) const override {
        if (row < 0 || row >= childCount())
            return nullptr;
        const auto [known, isNew] = rows_.try_emplace(row);
        if (isNew)
            known->second = QAccessible::registerAccessibleInterface(new RowAccessible(list_, row));
        return QAccessible::accessibleInterface(known->second);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override {
        const auto *const row = dynamic_cast<const RowAccessible *>(child);
        return row ? row->row() : -1;
    }
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override {
        const QPoint point = list_->viewport()->mapFromGlobal(QPoint(x, y));
        return list_->viewport()->rect().contains(point) ? child(list_->indexAt(point).row())
                                                         : nullptr;
    }
    [[nodiscard]] QAccessibleInterface *focusChild() const override {
        if (list_->hasFocus())
            return child(list_->selectedRow());
        QWidget *const focus = list_->focusWidget();
        return focus && list_->isAncestorOf(focus) ? QAccessible::queryAccessibleInterface(focus)
                                                   : nullptr;
    }

private:
    RowListView *list_;
    mutable std::map<int, QAccessible::Id> rows_;
};

/// Below its row, which is no widget.
class RowWidgetAccessible final : public QAccessibleWidget {
public:
    explicit RowWidgetAccessible(RowWidget *row) : QAccessibleWidget(row), row_(row) {}

    [[nodiscard]] QAccessibleInterface *parent() const override {
        QAccessibleInterface *const list =
            QAccessible::queryAccessibleInterface(row_->parentWidget()->parentWidget());
        return row_->index().isValid() ? list->child(row_->index().row()) : list;
    }

private:
    RowWidget *row_;
};

}  // namespace

void RowListView::installAccessibility() {
    installAccessible<RowListView, RowListAccessible>();
    installAccessible<RowWidget, RowWidgetAccessible>();
}

}  // namespace kestrelbay
