#pragma once

#include <gtest/gtest.h>

#include <QAbstractListModel>
#include <QApplication>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include <algorithm>
#include <set>
#include <vector>

#include "fakes/FakeTimers.h"
#include "fixtures/ActiveWindow.h"
#include "fixtures/QtPrinters.h"
#include "ui/list/RowDelegate.h"
#include "ui/list/RowListView.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

inline constexpr int kPitch = 56;

/// Two buttons and a number.
class NumberRow final : public RowWidget {
public:
    explicit NumberRow(QWidget *parent) : RowWidget(parent) {
        first_->setGeometry(0, 0, 40, 20);
        second_->setGeometry(50, 0, 40, 20);
    }

    void setSelected(bool selected) override { isSelected_ = selected; }
    [[nodiscard]] bool takesAllKeys() const override { return takesAllKeys_; }
    void leftView() override { left_->insert(number_); }

    QPushButton *first_ = new QPushButton(this);
    QPushButton *second_ = new QPushButton(this);
    std::set<int> *left_ = nullptr;
    int number_ = -1;
    bool isSelected_ = false;
    bool takesAllKeys_ = false;
};

class NumberModel final : public QAbstractListModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() ? 0 : count_;
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override {
        return role == Qt::AccessibleTextRole
                   ? QVariant(QStringLiteral("Number %1").arg(number(index.row())))
                   : QVariant();
    }
    [[nodiscard]] QStringList mimeTypes() const override { return {QStringLiteral("text/plain")}; }
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }
    bool dropMimeData(const QMimeData *data, Qt::DropAction, int gap, int,
                      const QModelIndex &) override {
        drops_.append(QStringLiteral("%1 above %2").arg(data->text()).arg(gap));
        return takesDrops_;
    }
    bool moveRows(const QModelIndex &, int source, int, const QModelIndex &, int gap) override {
        const auto first = numbers_.begin();
        std::swap(*(first + source), *(first + (gap > source ? gap - 1 : gap)));
        reload();
        return true;
    }

    void setCount(int count) {
        numbers_.clear();
        for (int i = 0; i < count; ++i)
            numbers_.push_back(i);
    }
    void reload() {
        const int count = static_cast<int>(numbers_.size());
        if (count < count_) {
            beginRemoveRows({}, count, count_ - 1);
            count_ = count;
            endRemoveRows();
        } else if (count > count_) {
            beginInsertRows({}, count_, count - 1);
            count_ = count;
            endInsertRows();
        }
        if (count > 0)
            Q_EMIT dataChanged(index(0), index(count - 1));
    }
    [[nodiscard]] int number(int row) const { return numbers_.at(static_cast<std::size_t>(row)); }

    std::vector<int> numbers_;
    QStringList drops_;
    bool takesDrops_ = true;

private:
    int count_ = 0;
};

/// A list of numbers between two buttons, five rows high.
class RowListFixture : public ::testing::Test {
protected:
    RowListFixture() {
        auto *const layout = new QVBoxLayout(&window_);
        layout->setContentsMargins({});
        layout->addWidget(before_);
        layout->addWidget(list_);
        layout->addWidget(after_);
        list_->setFixedHeight(5 * kPitch);
        window_.resize(400, 400);
    }

    void show(int count) {
        window_.show();
        ASSERT_TRUE(activate(window_));
        reload(count);
    }
    void reload(int count) {
        model_.setCount(count);
        model_.reload();
    }
    [[nodiscard]] RowWidget *makeRow(QWidget *parent) {
        ++made_;
        auto *const row = new NumberRow(parent);
        row->left_ = &left_;
        return row;
    }
    void fillRow(RowWidget *widget, int row) {
        ++configured_;
        dynamic_cast<NumberRow &>(*widget).number_ = model_.number(row);
    }
    [[nodiscard]] NumberRow *row(int index) const {
        return dynamic_cast<NumberRow *>(list_->rowWidget(index));
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    /// Does the viewport show the whole row?
    [[nodiscard]] bool isInView(int index) const {
        return row(index) && list_->viewport()->rect().contains(row(index)->geometry());
    }
    /// As it is painted above the middle of the row.
    [[nodiscard]] bool hasFocusRing(int index) const {
        const QRect place = row(index)->geometry();
        return list_->viewport()->grab().toImage().pixelColor(place.center().x(), place.top()) ==
               colors::controlAccent();
    }
    void scrollTo(int offset) { list_->verticalScrollBar()->setValue(offset); }

    NumberModel model_;
    FakeTimers timers_;
    std::set<int> left_;
    int made_ = 0;
    int configured_ = 0;
    QWidget window_;
    QPushButton *before_ = new QPushButton;
    RowListView *list_ =
        new RowListView(model_,
                        {.make = [this](QWidget *parent) { return makeRow(parent); },
                         .fill = [this](RowWidget *widget, int row) { fillRow(widget, row); },
                         .isTranslucencyShown = [] { return true; },
                         .height = 52,
                         .spacing = 4},
                        timers_);
    QPushButton *after_ = new QPushButton;
};

}  // namespace kestrelbay
