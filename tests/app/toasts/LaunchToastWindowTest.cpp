#include "app/toasts/LaunchToastWindow.h"

#include <QImage>
#include <QPointer>

#include <algorithm>
#include <array>
#include <chrono>

#include "app/toasts/ToastFixture.h"
#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

QImage plainIcon(Qt::GlobalColor color) {
    QImage image(72, 72, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

class LaunchToastWindowTest : public ToastFixture<LaunchToastWindow> {
protected:
    ~LaunchToastWindowTest() override { QApplication::setPalette(QPalette()); }

    static void show(LaunchToastDuration duration, Qt::GlobalColor color = Qt::red) {
        LaunchToastWindow::show(plainIcon(color), duration);
    }
    static QImage picture() { return current()->grab().toImage(); }
};

struct Times {
    LaunchToastDuration duration;
    std::chrono::milliseconds opaque;
    std::chrono::milliseconds fades;
    std::chrono::milliseconds gone;
};
constexpr std::array kTimes{Times{LaunchToastDuration::Short, 80ms, 330ms, 450ms},
                            Times{LaunchToastDuration::Medium, 100ms, 600ms, 850ms},
                            Times{LaunchToastDuration::Long, 150ms, 1050ms, 1500ms}};

TEST_F(LaunchToastWindowTest, NoneShowsNothing) {
    show(LaunchToastDuration::None);
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(nativeWindow_.takeCalls(), QStringList());
}

TEST_F(LaunchToastWindowTest, NoneLeavesTheOneOnScreen) {
    show(LaunchToastDuration::Long);
    LaunchToastWindow *first = current();
    show(LaunchToastDuration::None);
    EXPECT_EQ(current(), first);
}

TEST_F(LaunchToastWindowTest, FadesInHoldsAndFadesOutInTheTimesOfItsDuration) {
    for (const Times &times : kTimes) {
        show(times.duration);
        EXPECT_EQ(current()->windowOpacity(), 0.0);
        timers_.advance(times.opaque - 1ms);
        EXPECT_LT(current()->windowOpacity(), 1.0);
        timers_.advance(1ms);
        EXPECT_EQ(current()->windowOpacity(), 1.0);
        timers_.advance(times.gone - times.opaque - 1ms);
        ASSERT_NE(current(), nullptr);
        timers_.advance(1ms);
        EXPECT_EQ(current(), nullptr);
        EXPECT_EQ(timers_.waitingCount(), 0U);
    }
}

TEST_F(LaunchToastWindowTest, FadeOutStartsWhenTheHoldIsOver) {
    for (const Times &times : kTimes) {
        show(times.duration);
        timers_.advance(times.fades - 1ms);
        EXPECT_EQ(timers_.waitingCount(), 1U);
        EXPECT_EQ(current()->windowOpacity(), 1.0);
        // Replacing one that holds cancels the task; one that fades has its end to wait for.
        timers_.advance(1ms);
        EXPECT_EQ(timers_.waitingCount(), 1U);
        timers_.advance(times.gone - times.fades);
        EXPECT_EQ(current(), nullptr);
    }
}

TEST_F(LaunchToastWindowTest, NewOneTakesThePlaceAtOnceAndRunsItsWholeTime) {
    show(LaunchToastDuration::Long, Qt::red);
    const QPointer<LaunchToastWindow> first = current();
    timers_.advance(100ms);
    show(LaunchToastDuration::Long, Qt::blue);
    EXPECT_FALSE(first->isVisible());
    EXPECT_EQ(first->windowOpacity(), 0.0);
    ASSERT_NE(current(), first);
    EXPECT_EQ(picture().pixelColor(96, 96), QColor(Qt::blue));
    timers_.advance(1499ms);
    ASSERT_NE(current(), nullptr);
    timers_.advance(1ms);
    EXPECT_EQ(current(), nullptr);
}

TEST_F(LaunchToastWindowTest, FadeOutOfTheReplacedOneNeverRuns) {
    show(LaunchToastDuration::Long);
    timers_.advance(100ms);
    show(LaunchToastDuration::Long);
    // The first would have begun to fade after 1050 ms.
    timers_.advance(1049ms);
    EXPECT_EQ(current()->windowOpacity(), 1.0);
    EXPECT_EQ(timers_.waitingCount(), 1U);
}

TEST_F(LaunchToastWindowTest, OneThatFadesOutIsReplacedToo) {
    show(LaunchToastDuration::Short, Qt::red);
    timers_.advance(400ms);
    show(LaunchToastDuration::Short, Qt::blue);
    EXPECT_EQ(picture().pixelColor(96, 96), QColor(Qt::blue));
    timers_.advance(449ms);
    EXPECT_NE(current(), nullptr);
    timers_.advance(1ms);
    EXPECT_EQ(current(), nullptr);
}

TEST_F(LaunchToastWindowTest, DismissedItIsGoneAtOnce) {
    show(LaunchToastDuration::Medium);
    const QPointer<LaunchToastWindow> toast = current();
    toast->dismissImmediate();
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(toast.isNull());
}

TEST_F(LaunchToastWindowTest, StandsASixthUpTheFreeAreaOfTheScreen) {
    show(LaunchToastDuration::Short);
    const QRect free = QGuiApplication::primaryScreen()->availableGeometry();
    const QRect frame = current()->geometry();
    EXPECT_EQ(frame.size(), QSize(192, 192));
    EXPECT_EQ(frame.left(), free.left() + (free.width() - 192) / 2);
    EXPECT_NEAR(frame.top() + 192, free.top() + free.height() * 5.0 / 6, 0.5);
}

TEST_F(LaunchToastWindowTest, IconIsInTheMiddle) {
    show(LaunchToastDuration::Short, Qt::red);
    const QImage image = picture();
    for (const QPoint &inside : {QPoint(60, 60), QPoint(131, 131)})
        EXPECT_EQ(image.pixelColor(inside), QColor(Qt::red));
    for (const QPoint &outside : {QPoint(59, 96), QPoint(132, 96), QPoint(96, 59), QPoint(96, 132)})
        EXPECT_NE(image.pixelColor(outside), QColor(Qt::red));
}

TEST_F(LaunchToastWindowTest, IsAFloatingPanelBeforeItIsShown) {
    show(LaunchToastDuration::Short);
    const QString id = QString::number(current()->winId());
    EXPECT_EQ(nativeWindow_.takeCalls(),
              (QStringList{QStringLiteral("makeFloatingPanel ") + id,
                           QStringLiteral("setBehindWindowMaterial ") + id +
                               QStringLiteral(" 0,0 192x192 radius 28")}));
}

TEST_F(LaunchToastWindowTest, TakesNeitherFocusNorInput) {
    show(LaunchToastDuration::Short);
    const Qt::WindowFlags flags = current()->windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
    EXPECT_TRUE(flags.testFlag(Qt::WindowTransparentForInput));
    EXPECT_TRUE(flags.testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(current()->testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(LaunchToastWindowTest, TranslucentWhereTheDesktopShowsIt) {
    QApplication::setPalette(systemPalette(ColorScheme::Dark));
    show(LaunchToastDuration::Short);
    EXPECT_TRUE(current()->testAttribute(Qt::WA_TranslucentBackground));
    const QImage image = picture();
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(96, 20).alpha(), colors::toast(true).alpha());
}

TEST_F(LaunchToastWindowTest, NothingLiesOverAMaterialThatIsAGround) {
    nativeWindow_.setMaterialAGround(true);
    show(LaunchToastDuration::Short);
    EXPECT_EQ(picture().pixelColor(96, 20).alpha(), 0);
    EXPECT_EQ(picture().pixelColor(96, 96).alpha(), 255) << "that is the icon";
}

TEST_F(LaunchToastWindowTest, QtLeavesItsLevelAlone) {
    show(LaunchToastDuration::Short);
    // With it, Qt lowers the windows of a program that is no longer active on macOS.
    EXPECT_FALSE(current()->testAttribute(Qt::WA_MacAlwaysShowToolWindow));
}

TEST_F(LaunchToastWindowTest, OpaqueAndCutOutWhereItDoesNot) {
    QApplication::setPalette(systemPalette(ColorScheme::Light));
    nativeWindow_.setTranslucencyShown(false);
    show(LaunchToastDuration::Short);
    EXPECT_FALSE(current()->testAttribute(Qt::WA_TranslucentBackground));
    const QString id = QString::number(current()->winId());
    EXPECT_EQ(nativeWindow_.takeCalls(),
              (QStringList{QStringLiteral("makeFloatingPanel ") + id,
                           QStringLiteral("cutToRoundedRectangle ") + id +
                               QStringLiteral(" 0,0 192x192 radius 28")}));
    EXPECT_EQ(picture().pixelColor(96, 20), colors::toast(false));
}

TEST_F(LaunchToastWindowTest, FollowsTheAppearance) {
    QApplication::setPalette(systemPalette(ColorScheme::Light));
    nativeWindow_.setTranslucencyShown(false);
    show(LaunchToastDuration::Short);
    const QColor light = picture().pixelColor(96, 20);
    QApplication::setPalette(systemPalette(ColorScheme::Dark));
    EXPECT_LT(picture().pixelColor(96, 20).lightness(), light.lightness());
}

TEST_F(LaunchToastWindowTest, WithoutServicesNothingIsShown) {
    ToastPanel::setServices(nullptr);
    show(LaunchToastDuration::Long);
    EXPECT_EQ(current(), nullptr);
}

TEST_F(LaunchToastWindowTest, ServicesTakenAwayCloseIt) {
    show(LaunchToastDuration::Long);
    timers_.advance(500ms);
    ToastPanel::setServices(nullptr);
    EXPECT_EQ(current(), nullptr);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    ToastPanel::setServices(&services_);
    show(LaunchToastDuration::Long);
    EXPECT_NE(current(), nullptr);
}

}  // namespace

}  // namespace kestrelbay
