#pragma once

#include <gtest/gtest.h>

#include <QApplication>
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
#include "ui/list/RowTableSource.h"
#include "ui/list/RowTableView.h"

namespace kestrelbay {

inline constexpr int kPitch = 56;

/// Two buttons and a number.
class NumberRow final : public QWidget {
public:
    explicit NumberRow(QWidget *parent) : QWidget(parent) {
        first_->setGeometry(0, 0, 40, 20);
        second_->setGeometry(50, 0, 40, 20);
    }

    QPushButton *first_ = new QPushButton(this);
    QPushButton *second_ = new QPushButton(this);
    int number_ = -1;
    bool isSelected_ = false;
    bool takesAllKeys_ = false;
};

class NumberSource final : public RowTableSource {
public:
    [[nodiscard]] int rowCount() const override { return static_cast<int>(numbers_.size()); }
    [[nodiscard]] QWidget *makeRow(QWidget *parent) override {
        ++made_;
        return new NumberRow(parent);
    }
    void configureRow(QWidget *widget, int row) override {
        ++configured_;
        dynamic_cast<NumberRow &>(*widget).number_ = numbers_.at(static_cast<std::size_t>(row));
    }
    void setRowSelected(QWidget *widget, bool selected) override {
        dynamic_cast<NumberRow &>(*widget).isSelected_ = selected;
    }
    [[nodiscard]] bool rowTakesAllKeys(QWidget *widget) const override {
        return dynamic_cast<NumberRow &>(*widget).takesAllKeys_;
    }
    void rowLeftView(QWidget *widget) override {
        left_.insert(dynamic_cast<NumberRow &>(*widget).number_);
    }
    [[nodiscard]] QString rowName(int row) const override {
        return QStringLiteral("Number %1").arg(numbers_.at(static_cast<std::size_t>(row)));
    }
    [[nodiscard]] bool acceptDrop(const QString &text, int gap) override {
        drops_.append(QStringLiteral("%1 above %2").arg(text).arg(gap));
        return takesDrops_;
    }
    void moveRow(int source, int destination) override {
        const auto first = numbers_.begin();
        std::swap(*(first + source), *(first + destination));
        table_->reload();
    }

    void setCount(int count) {
        numbers_.clear();
        for (int i = 0; i < count; ++i)
            numbers_.push_back(i);
    }

    RowTableView *table_ = nullptr;
    std::vector<int> numbers_;
    std::set<int> left_;
    QStringList drops_;
    bool takesDrops_ = true;
    int made_ = 0;
    int configured_ = 0;
};

/// A table of numbers between two buttons, five rows high.
class RowTableFixture : public ::testing::Test {
protected:
    RowTableFixture() {
        auto *const layout = new QVBoxLayout(&window_);
        layout->setContentsMargins({});
        layout->addWidget(before_);
        layout->addWidget(table_);
        layout->addWidget(after_);
        source_.table_ = table_;
        table_->setFixedHeight(5 * kPitch);
        window_.resize(400, 400);
    }

    void show(int count) {
        window_.show();
        ASSERT_TRUE(activate(window_));
        source_.setCount(count);
        table_->reload();
    }
    [[nodiscard]] NumberRow *row(int index) const {
        return dynamic_cast<NumberRow *>(table_->rowWidget(index));
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }
    /// Does the viewport show the whole row?
    [[nodiscard]] bool isInView(int index) const {
        const int top = table_->rows().top(index) - table_->offset();
        return top >= 0 && top + 52 <= table_->viewport()->height();
    }
    void scrollTo(int offset) { table_->verticalScrollBar()->setValue(offset); }

    NumberSource source_;
    FakeTimers timers_;
    QWidget window_;
    QPushButton *before_ = new QPushButton;
    RowTableView *table_ = new RowTableView(source_, timers_, 52, 4);
    QPushButton *after_ = new QPushButton;
};

}  // namespace kestrelbay
