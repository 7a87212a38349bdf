#include "app/toasts/ToastWindow.h"

#include <QAccessible>
#include <QPointer>

#include <thread>

#include "app/toasts/ToastFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class ToastWindowTest : public ToastFixture<ToastWindow> {
protected:
    /// The message toast on screen after the queue has run.
    ToastWindow *show(const QString &message, const QString &title = {},
                      const std::function<void()> &action = {}) {
        ToastWindow::show(message, title, action);
        mainQueue_.runAll();
        return current();
    }
    static QLabel *label() { return current()->findChild<QLabel *>(); }
    static QPushButton *button() { return current()->findChild<QPushButton *>(); }
};

QString lines(int count) {
    return QStringList(count, u"line"_s).join(u'\n');
}

TEST_F(ToastWindowTest, ShowOnlyQueuesTheWork) {
    ToastWindow::show(u"Notice"_s);
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(mainQueue_.pendingCount(), 1U);
    mainQueue_.runAll();
    EXPECT_NE(current(), nullptr);
}

TEST_F(ToastWindowTest, CanBeShownFromAnotherThread) {
    std::thread([] { ToastWindow::show(u"Notice"_s); }).join();
    EXPECT_EQ(current(), nullptr);
    mainQueue_.runAll();
    EXPECT_EQ(label()->text(), u"Notice"_s);
}

TEST_F(ToastWindowTest, StaysFourSecondsAndFades) {
    EXPECT_EQ(show(u"Notice"_s)->windowOpacity(), 1.0);
    timers_.advance(3999ms);
    EXPECT_EQ(current()->windowOpacity(), 1.0);
    timers_.advance(300ms);
    ASSERT_NE(current(), nullptr);
    timers_.advance(1ms);
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(ToastWindowTest, NewOneTakesThePlaceAndKeepsItsFourSeconds) {
    const QPointer<ToastWindow> first = show(u"First"_s);
    timers_.advance(3000ms);
    ToastWindow *second = show(u"Second"_s);
    EXPECT_FALSE(first->isVisible());
    EXPECT_EQ(label()->text(), u"Second"_s);
    // By now the first would have faded and gone.
    timers_.advance(3999ms);
    EXPECT_EQ(current(), second);
    EXPECT_EQ(second->windowOpacity(), 1.0);
    timers_.advance(301ms);
    EXPECT_EQ(current(), nullptr);
}

TEST_F(ToastWindowTest, OneThatFadesIsReplacedToo) {
    show(u"First"_s);
    timers_.advance(4100ms);
    ToastWindow *second = show(u"Second"_s);
    EXPECT_EQ(second->windowOpacity(), 1.0);
    timers_.advance(1000ms);
    EXPECT_EQ(current(), second);
}

TEST_F(ToastWindowTest, StandsThreeQuartersUpTheWholeScreen) {
    show(u"Notice"_s);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QRect frame = current()->geometry();
    EXPECT_EQ(frame.size(), QSize(420, 56));
    EXPECT_EQ(frame.left(), screen.left() + (screen.width() - 420) / 2);
    EXPECT_NEAR(frame.top() + 56, screen.top() + screen.height() / 4.0, 0.5);
}

TEST_F(ToastWindowTest, HeightHasRoomForTwoLinesAtMost) {
    EXPECT_EQ(show(lines(1))->height(), 56);
    const int oneLine = label()->height();
    const int twoLineHeight = show(lines(2))->height();
    EXPECT_NEAR(label()->height(), 2 * oneLine, 1);
    EXPECT_EQ(twoLineHeight, std::max(label()->height() + 28, 56));
    EXPECT_EQ(show(lines(5))->height(), 28 + 39);
    EXPECT_EQ(label()->height(), 39);
    EXPECT_EQ(label()->text(), u"line\nline"_s + QChar(0x2026));
}

TEST_F(ToastWindowTest, TextStandsInTheMiddle) {
    show(u"Notice"_s);
    const int height = label()->height();
    EXPECT_EQ(label()->geometry(), QRect(16, (56 - height) / 2, 388, height));
    EXPECT_EQ(label()->font().pixelSize(), 13);
}

TEST_F(ToastWindowTest, ButtonStandsAtTheRight) {
    show(u"Notice"_s, u"Grant Access"_s, [] {});
    const int height = label()->height();
    const QSize size = button()->size();
    EXPECT_EQ(size.width(), std::max(button()->sizeHint().width() + 16, 60));
    EXPECT_EQ(button()->geometry(),
              QRect(QPoint(420 - size.width() - 12, (56 - size.height()) / 2), size));
    EXPECT_EQ(label()->geometry(), QRect(16, (56 - height) / 2, 420 - size.width() - 44, height));
    EXPECT_EQ(button()->text(), u"Grant Access"_s);
    EXPECT_EQ(button()->font().pixelSize(), 12);
    EXPECT_EQ(button()->font().weight(), QFont::Medium);
}

TEST_F(ToastWindowTest, ButtonRunsTheActionAndLeavesTheToast) {
    int runs = 0;
    ToastWindow *toast = show(u"Notice"_s, u"Do it"_s, [&runs] { ++runs; });
    EXPECT_FALSE(toast->windowFlags().testFlag(Qt::WindowTransparentForInput));
    timers_.advance(1000ms);
    button()->click();
    button()->click();
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(current(), toast);
    timers_.advance(3299ms);
    EXPECT_EQ(current(), toast);
    timers_.advance(1ms);
    EXPECT_EQ(current(), nullptr);
}

TEST_F(ToastWindowTest, ActionMayShowTheNextToast) {
    show(u"First"_s, u"More"_s, [] { ToastWindow::show(u"Second"_s); });
    button()->click();
    mainQueue_.runAll();
    EXPECT_EQ(label()->text(), u"Second"_s);
}

TEST_F(ToastWindowTest, ActionMayLastLongerThanTheToast) {
    const QPointer<ToastWindow> toast =
        show(u"First"_s, u"More"_s, [this] { timers_.advance(5000ms); });
    button()->click();
    EXPECT_EQ(current(), nullptr);
    EXPECT_FALSE(toast.isNull());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(toast.isNull());
}

TEST_F(ToastWindowTest, WithoutTitleOrWithoutActionThereIsNoButton) {
    show(u"Notice"_s, {}, [] {});
    EXPECT_EQ(button(), nullptr);
    EXPECT_TRUE(current()->windowFlags().testFlag(Qt::WindowTransparentForInput));
    show(u"Notice"_s, u"Grant Access"_s);
    EXPECT_EQ(button(), nullptr);
    EXPECT_TRUE(current()->windowFlags().testFlag(Qt::WindowTransparentForInput));
    EXPECT_EQ(label()->width(), 388);
}

TEST_F(ToastWindowTest, TextBesideAWideButtonIsNotCut) {
    // Fits a line of 308, but not the room that this button leaves.
    QString message = u"x"_s;
    while (QFontMetrics(show(message)->findChild<QLabel *>()->font())
               .horizontalAdvance(message + u" x"_s) < 300)
        message += u" x"_s;
    show(message, u"A title of some length"_s, [] {});
    ASSERT_LT(label()->width(), 290);
    EXPECT_EQ(label()->text().split(u'\n').join(u' '), message);
    EXPECT_GE(label()->height(), QFontMetrics(label()->font()).height() * 2 - 1);
}

TEST_F(ToastWindowTest, TitleNarrowsTheMeasureEvenWithoutAnAction) {
    const QString message = u"word "_s.repeated(10);
    show(message);
    int width = QFontMetrics(label()->font()).horizontalAdvance(message);
    QString fitting = message;
    while (width < 330) {
        fitting += u"w"_s;
        width = QFontMetrics(label()->font()).horizontalAdvance(fitting);
    }
    show(fitting);
    const int oneLine = label()->height();
    show(fitting, u"Title"_s);
    EXPECT_GT(label()->height(), oneLine);
}

TEST_F(ToastWindowTest, IsAFloatingPanelBeforeItIsShown) {
    show(u"Notice"_s);
    const QString id = QString::number(current()->winId());
    EXPECT_EQ(nativeWindow_.takeCalls(),
              (QStringList{u"makeFloatingPanel "_s + id,
                           u"setBehindWindowMaterial "_s + id + u" 0,0 420x56 radius 12"_s}));
}

TEST_F(ToastWindowTest, ScreenReadersFindTheWholeMessage) {
    const QString message = u"Long notice "_s.repeated(30);
    QAccessibleInterface *panel = QAccessible::queryAccessibleInterface(show(message));
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->text(QAccessible::Name), message);
}

TEST_F(ToastWindowTest, WithoutServicesNothingIsShown) {
    ToastPanel::setServices(nullptr);
    ToastWindow::show(u"Notice"_s);
    EXPECT_EQ(mainQueue_.pendingCount(), 0U);
}

TEST_F(ToastWindowTest, ServicesTakenAwayCloseItAndStopWhatIsQueued) {
    show(u"First"_s);
    ToastWindow::show(u"Second"_s);
    ToastPanel::setServices(nullptr);
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    mainQueue_.runAll();
    EXPECT_EQ(current(), nullptr);
}

TEST_F(ToastWindowTest, BothKindsCanBeOnScreen) {
    ToastWindow *toast = show(u"Notice"_s);
    LaunchToastWindow::show(QImage(), LaunchToastDuration::Short);
    EXPECT_EQ(current(), toast);
    timers_.advance(450ms);
    EXPECT_EQ(current(), toast);
}

}  // namespace

}  // namespace kestrelbay
