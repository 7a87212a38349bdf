#pragma once

#include <map>

#include <QAccessibleWidget>

namespace kestrelbay {

class RowSlot;
class RowTableView;

/// From now on screen readers see every RowTableView as a list of all its rows, those
/// out of sight included.
void installRowTableAccessibility();

/// The list. Its children are the rows.
class RowTableAccessible final : public QAccessibleWidget {
public:
    explicit RowTableAccessible(RowTableView *table);
    ~RowTableAccessible() override;
    RowTableAccessible(const RowTableAccessible &) = delete;
    RowTableAccessible &operator=(const RowTableAccessible &) = delete;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface *child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *child) const override;
    [[nodiscard]] QAccessibleInterface *childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface *focusChild() const override;

private:
    RowTableView *table_;
    // Of rows that have no widget.
    mutable std::map<int, QAccessible::Id> distantRows_;
};

/// A row that has a widget; its controls are its children.
class RowSlotAccessible final : public QAccessibleWidget {
public:
    explicit RowSlotAccessible(RowSlot *slot);

    [[nodiscard]] QAccessibleInterface *parent() const override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString &actionName) override;

private:
    RowSlot *slot_;
};

/// A row without a widget.
class DistantRowAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    DistantRowAccessible(RowTableView *table, int row);

    [[nodiscard]] int row() const { return row_; }

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject *object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface *parent() const override;
    [[nodiscard]] QAccessibleInterface *child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString &) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    RowTableView *table_;
    int row_;
};

}  // namespace kestrelbay
