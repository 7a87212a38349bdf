#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace kestrelbay {

/// Counts how often a widget paints itself on the screen. grab() would paint it anyway.
class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget &widget) { widget.installEventFilter(this); }

    [[nodiscard]] int count() const { return count_; }
    /// Has everything painted that is due.
    void settle() {
        QApplication::processEvents();
        count_ = 0;
    }

    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Paint)
            ++count_;
        return QObject::eventFilter(watched, event);
    }

private:
    int count_ = 0;
};

}  // namespace kestrelbay
