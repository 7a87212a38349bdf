#include "ui/list/RowDrag.h"

#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>

#include <utility>

namespace kestrelbay {

RowDrag *RowDrag::start(const QString &text, const QPixmap &picture, QPoint hotSpot) {
    auto *const drag = new RowDrag(text, picture, hotSpot);
    QMetaObject::invokeMethod(
        drag, [drag] { drag->run(); }, Qt::QueuedConnection);
    return drag;
}

RowDrag::RowDrag(QString text, QPixmap picture, QPoint hotSpot)
    : text_(std::move(text)), picture_(std::move(picture)), hotSpot_(hotSpot) {}

void RowDrag::cancel() {
    isCancelled_ = true;
    if (isRunning_)
        QDrag::cancel();
}

void RowDrag::run() {
    if (!isCancelled_ && QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)) {
        auto *const data = new QMimeData;
        data->setText(text_);
        auto *const drag = new QDrag(this);
        drag->setMimeData(data);
        drag->setPixmap(picture_);
        drag->setHotSpot(hotSpot_);
        isRunning_ = true;
        drag->exec(Qt::MoveAction);
        isRunning_ = false;
    }
    deleteLater();
}

}  // namespace kestrelbay
