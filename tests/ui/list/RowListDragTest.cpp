#include "ui/list/RowListView.h"

#include <QApplication>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>

#include <memory>

#include "ui/list/RowDrop.h"
#include "ui/list/RowListFixture.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class RowListDragTest : public RowListFixture {
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
        QApplication::sendEvent(list_->viewport(), event.get());
        return event->isAccepted();
    }
    [[nodiscard]] DropLine *line() const { return list_->viewport()->findChild<DropLine *>(); }

    QMimeData mime_;
};

TEST_F(RowListDragTest, dragsAPictureThroughWhichTheListIsSeen) {
    show(10);
    list_->selectRow(1);
    const QImage picture = row(1)->dragPicture(true).toImage();
    EXPECT_EQ(picture.size(), row(1)->size() * picture.devicePixelRatio());
    for (const QPoint place : {QPoint(0, 26), QPoint(20, 10), QPoint(200, 26)})
        EXPECT_NEAR(picture.pixelColor(place).alphaF(), 0.6, 0.01);
    before_->setFocus();
    press(Qt::Key_Tab);
    ASSERT_TRUE(hasFocusRing(1));
    EXPECT_EQ(row(1)->dragPicture(true).toImage(), picture);
}

TEST_F(RowListDragTest, dragsAPictureThatIsWhollyThereWhereNothingIsSeenThrough) {
    show(10);
    const QImage picture = row(1)->dragPicture(false).toImage();
    EXPECT_EQ(picture.size(), row(1)->size() * picture.devicePixelRatio());
    for (const QPoint place : {QPoint(0, 26), QPoint(20, 10), QPoint(200, 26)})
        EXPECT_EQ(picture.pixelColor(place).alpha(), 255);
}

TEST_F(RowListDragTest, showsADropLineInTheGap) {
    show(10);
    scrollTo(kPitch);
    EXPECT_TRUE(drag(QEvent::DragEnter, 2 * kPitch));
    EXPECT_TRUE(line()->isVisible());
    EXPECT_EQ(line()->geometry().center().y() + 1, 2 * kPitch);
    EXPECT_TRUE(drag(QEvent::DragMove, 3 * kPitch + 5));
    EXPECT_EQ(line()->geometry().center().y() + 1, 3 * kPitch);
    QDragLeaveEvent leave;
    QApplication::sendEvent(list_->viewport(), &leave);
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(RowListDragTest, refusesADropOnARow) {
    show(10);
    // What enters on a row may still go on to a gap.
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch / 2));
    EXPECT_FALSE(line()->isVisible());
    EXPECT_FALSE(drag(QEvent::DragMove, kPitch / 2));
    EXPECT_FALSE(drag(QEvent::Drop, kPitch / 2));
    EXPECT_TRUE(model_.drops_.isEmpty());
}

TEST_F(RowListDragTest, takesTheDropLineAwayOverARow) {
    show(10);
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch));
    EXPECT_TRUE(line()->isVisible());
    EXPECT_FALSE(drag(QEvent::DragMove, kPitch + kPitch / 2));
    EXPECT_FALSE(line()->isVisible());
    EXPECT_TRUE(drag(QEvent::DragMove, 2 * kPitch));
    EXPECT_TRUE(line()->isVisible());
}

TEST_F(RowListDragTest, handsADropToItsSource) {
    show(10);
    scrollTo(kPitch);
    EXPECT_TRUE(drag(QEvent::DragEnter, kPitch));
    EXPECT_TRUE(drag(QEvent::Drop, kPitch, u"7"_s));
    EXPECT_EQ(model_.drops_, QStringList{u"7 above 2"_s});
    EXPECT_FALSE(line()->isVisible());
    model_.takesDrops_ = false;
    EXPECT_FALSE(drag(QEvent::Drop, kPitch, u"x"_s));
}

TEST_F(RowListDragTest, refusesADragWithoutText) {
    show(10);
    mime_.setData(u"image/png"_s, "x");
    QDragEnterEvent event(QPoint(100, 0), Qt::MoveAction | Qt::CopyAction, &mime_, Qt::LeftButton,
                          Qt::NoModifier);
    QApplication::sendEvent(list_->viewport(), &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(RowListDragTest, scrollsUnderADragNearTheEdge) {
    show(100);
    EXPECT_TRUE(drag(QEvent::DragEnter, 5 * kPitch - 2));
    timers_.advance(160ms);
    const int offset = list_->offset();
    EXPECT_GT(offset, 0);
    timers_.advance(160ms);
    EXPECT_GT(list_->offset(), offset);
    EXPECT_TRUE(drag(QEvent::DragMove, 3 * kPitch - list_->offset() % kPitch));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(RowListDragTest, scrollsNoMoreAfterTheDrop) {
    show(100);
    EXPECT_TRUE(drag(QEvent::DragEnter, 5 * kPitch - 2));
    EXPECT_TRUE(drag(QEvent::Drop, 5 * kPitch - 2));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

}  // namespace
}  // namespace kestrelbay
