#pragma once

#include <QObject>
#include <QPixmap>
#include <QPoint>
#include <QString>

namespace kestrelbay {

/// A row under way. The system runs a nested event loop for it, in which anything may
/// happen to the list it came from; so it belongs to nobody and destroys itself once it
/// was dropped or given up.
class RowDrag final : public QObject {
    Q_OBJECT

public:
    /// Begins with the next turn of the event loop, when the stack holds none of the
    /// list's own functions, and if the mouse button is still down by then.
    static RowDrag *start(const QString &text, const QPixmap &picture, QPoint hotSpot);

    void cancel();

private:
    RowDrag(QString text, QPixmap picture, QPoint hotSpot);

    void run();

    QString text_;
    QPixmap picture_;
    QPoint hotSpot_;
    bool isRunning_ = false;
    bool isCancelled_ = false;
};

}  // namespace kestrelbay
