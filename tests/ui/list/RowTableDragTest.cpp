#include "ui/list/RowDropTarget.h"

#include <QApplication>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>

#include <memory>

#include "ui/list/DropLine.h"
#include "ui/list/RowSlot.h"
#include "ui/list/RowTableFixture.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class RowTableDragTest : public RowTableFixture {
protected:
    [[nodiscard]] bool drag(QEvent::Type type, int y, const QString &text = u"0"_s) {
        mime_.setText(text);
        const QPoint point(100, y);
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        std::unique_ptr<QDropEvent> event;
        if (type == QEvent::DragEnter)
            event = std::make_unique<QDragEnterEvent>(point, actions, &mime_, Qt::LeftButton,
                                                      Qt::NoModifier);
        else if (type == QEvent::DragMove)
            event = std::make_unique<QDragMoveEvent>(point, actions, &mime_, Qt::LeftButton,
                                                     Qt::NoModifier);
        else
            event = std::make_unique<QDropEvent>(point, actions, &mime_, Qt::LeftButton,
                                                 Qt::NoModifier);
        event->ignore();
        QApplication::sendEvent(table_->viewport(), event.get());
        return event->isAccepted();
    }
    [[nodiscard]] DropLine *line() const { return table_->viewport()->findChild<DropLine *>(); }

    QMimeData mime_;
};

TEST_F(RowTableDragTest, dragsAPictureThroughWhichTheListIsSeen) {
    show(10);
    table_->selectRow(1);
    const QImage picture = table_->slot(1)->dragPicture().toImage();
    EXPECT_EQ(picture.size(), table_->slot(1)->size() * picture.devicePixelRatio());
    for (const QPoint place : {QPoint(0, 26), QPoint(20, 10), QPoint(200, 26)})
        EXPECT_NEAR(picture.pixelColor(place).alphaF(), 0.6, 0.01);
    table_->setFocus();
    ASSERT_TRUE(table_->slot(1)->hasFocusRing());
    EXPECT_EQ(table_->slot(1)->dragPicture().toImage(), picture);
}

TEST_F(RowTableDragTest, showsADropLineInTheGap) {
    show(10);
    scrollTo(kPitch);
    EXPECT_TRUE(drag(QEvent::DragEnter, 2 * kPitch));
    EXPECT_TRUE(line()->isVisible());
    EXPECT_EQ(line()->geometry().center().y() + 1, 2 * kPitch);
    EXPECT_TRUE(drag(QEvent::DragMove, 3 * kPitch + 5));
    EXPECT_EQ(line()->geometry().center().y() + 1, 3 * kPitch);
    QDragLeaveEvent leave;
    QApplication::sendEvent(table_->viewport(), &leave);
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(RowTableDragTest, refusesADropOnARow) {
    show(10);
    // What enters on a row may still go on to a gap.
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch / 2));
    EXPECT_FALSE(line()->isVisible());
    EXPECT_FALSE(drag(QEvent::DragMove, kPitch / 2));
    EXPECT_FALSE(drag(QEvent::Drop, kPitch / 2));
    EXPECT_TRUE(source_.drops_.isEmpty());
}

TEST_F(RowTableDragTest, takesTheDropLineAwayOverARow) {
    show(10);
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch));
    EXPECT_TRUE(line()->isVisible());
    EXPECT_FALSE(drag(QEvent::DragMove, kPitch + kPitch / 2));
    EXPECT_FALSE(line()->isVisible());
    EXPECT_TRUE(drag(QEvent::DragMove, 2 * kPitch));
    EXPECT_TRUE(line()->isVisible());
}

TEST_F(RowTableDragTest, handsADropToItsSource) {
    show(10);
    scrollTo(kPitch);
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch));
    EXPECT_TRUE(drag(QEvent::Drop, kPitch, u"7"_s));
    EXPECT_EQ(source_.drops_, QStringList{u"7 above 2"_s});
    EXPECT_FALSE(line()->isVisible());
    source_.takesDrops_ = false;
    EXPECT_FALSE(drag(QEvent::Drop, kPitch, u"x"_s));
}

TEST_F(RowTableDragTest, refusesADragWithoutText) {
    show(10);
    mime_.setData(u"image/png"_s, "x");
    QDragEnterEvent event(QPoint(100, 0), Qt::MoveAction | Qt::CopyAction, &mime_, Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(table_->viewport(), &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(RowTableDragTest, scrollsUnderADragNearTheEdge) {
    show(100);
    EXPECT_TRUE(drag(QEvent::DragEnter, 5 * kPitch - 2));
    timers_.advance(160ms);
    const int offset = table_->offset();
    EXPECT_GT(offset, 0);
    timers_.advance(160ms);
    EXPECT_GT(table_->offset(), offset);
    EXPECT_TRUE(drag(QEvent::DragMove, 3 * kPitch - table_->offset() % kPitch));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(RowTableDragTest, scrollsNoMoreAfterTheDrop) {
    show(100);
    EXPECT_TRUE(drag(QEvent::DragEnter, 5 * kPitch - 2));
    EXPECT_TRUE(drag(QEvent::Drop, 5 * kPitch - 2));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

}  // namespace
}  // namespace kestrelbay
