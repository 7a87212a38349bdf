#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "app/SystemColors.h"
#include "app/display/ToastStage.h"
#include "core/QtPrinters.h"
#include "platform/SystemSettings.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;
using Clock = std::chrono::steady_clock;

constexpr QRgb kBackgroundColor = qRgb(220, 30, 30);

QIcon plainIcon(Qt::GlobalColor color = Qt::blue) {
    QPixmap pixmap(72, 72);
    pixmap.fill(color);
    return QIcon(pixmap);
}

/// QWidget::winId() stays behind when Qt makes the window anew.
xcb_window_t windowOf(const QWidget &widget) {
    return static_cast<xcb_window_t>(widget.windowHandle()->winId());
}

/// A window below the toasts, which counts the clicks it gets.
class Background final : public QWidget {
public:
    Background() { setWindowTitle(u"Background"_s); }
    [[nodiscard]] int clicks() const { return clicks_; }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter(this).fillRect(rect(), QColor(kBackgroundColor));
    }
    void mousePressEvent(QMouseEvent *) override { ++clicks_; }

private:
    int clicks_ = 0;
};

class ToastDisplayTest : public ::testing::Test {
protected:
    ToastDisplayTest() { QApplication::setPalette(systemPalette(ColorScheme::Light)); }

    template <class Toast>
    static Toast *current() {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *toast = qobject_cast<Toast *>(widget); toast && toast->isVisible())
                return toast;
        }
        return nullptr;
    }
    template <class Toast>
    xcb_window_t shownWindow() {
        if (!ToastStage::waitUntil([] { return current<Toast>() != nullptr; }))
            throw std::runtime_error("there is no toast");
        const auto window = windowOf(*current<Toast>());
        EXPECT_TRUE(
            ToastStage::waitUntil([&] { return ToastStage::isMapped(stage_.view(), window); }));
        return window;
    }
    void showBackground() {
        background_.showFullScreen();
        ASSERT_TRUE(ToastStage::waitUntil([this] {
            return stage_.view().active() == background_.winId() &&
                   ToastStage::screen().pixel(5, 5) == kBackgroundColor;
        }));
    }
    static bool screenShows(const QPoint &where, const std::function<bool(QColor)> &isRight) {
        return ToastStage::waitUntil(
            [&] { return isRight(ToastStage::screen().pixelColor(where)); }, 3s);
    }

    ToastStage stage_;
    Background background_;
};

struct Times {
    LaunchToastDuration duration;
    std::chrono::milliseconds opaque;
    std::chrono::milliseconds fades;
    std::chrono::milliseconds gone;
};
constexpr Times kTimes[] = {{LaunchToastDuration::Short, 80ms, 330ms, 450ms},
                            {LaunchToastDuration::Medium, 100ms, 600ms, 850ms},
                            {LaunchToastDuration::Long, 150ms, 1050ms, 1500ms}};

struct Seen {
    double opaque = 0;
    double fades = 0;
    double gone = 0;
    int stepsIn = 0;
    int stepsOut = 0;
};

/// Follows a window that was just shown until it is gone, from a thread and a
/// connection of its own. In milliseconds from when it first saw the window.
Seen watch(xcb_window_t window) {
    Seen seen;
    std::atomic<bool> isGone = false;
    std::thread watcher([&] {
        desktop::WindowManagerView view(qEnvironmentVariable("DISPLAY"));
        while (!ToastStage::isMapped(view, window)) {
        }
        const auto start = Clock::now();
        double last = ToastStage::opacity(view, window);
        while (ToastStage::isMapped(view, window)) {
            const double opacity = ToastStage::opacity(view, window);
            const double now =
                std::chrono::duration<double, std::milli>(Clock::now() - start).count();
            if (opacity > last)
                ++seen.stepsIn;
            if (opacity == 1 && seen.opaque == 0)
                seen.opaque = now;
            if (opacity < last && seen.stepsOut++ == 0)
                seen.fades = now;
            last = opacity;
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
        seen.gone = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        isGone = true;
    });
    EXPECT_TRUE(ToastStage::waitUntil([&] { return isGone.load(); }));
    watcher.join();
    return seen;
}

TEST_F(ToastDisplayTest, LaunchToastKeepsItsTimesWithinAFrame) {
    constexpr double kFrame = 16;
    for (const Times &times : kTimes) {
        // Another process can keep the processor for longer than a frame, so that a
        // run is late; one that is in time shows that the program itself is.
        std::optional<Seen> inTime;
        Seen seen;
        for (int run = 0; run < 6 && !inTime; ++run) {
            LaunchToastWindow::show(plainIcon(), times.duration);
            seen = watch(windowOf(*current<LaunchToastWindow>()));
            const auto near = [](double is, std::chrono::milliseconds due, double frames) {
                return std::abs(is - double(due.count())) <= frames * kFrame;
            };
            // The fade begins so slowly that its second frame is the first to be seen.
            if (near(seen.opaque, times.opaque, 1) && near(seen.fades, times.fades, 2) &&
                near(seen.gone, times.gone, 1) && seen.stepsIn >= 3 && seen.stepsOut >= 3)
                inTime = seen;
        }
        std::cout << "opaque " << seen.opaque << ", fades " << seen.fades << ", gone " << seen.gone
                  << " ms, steps " << seen.stepsIn << " and " << seen.stepsOut << '\n';
        EXPECT_TRUE(inTime);
    }
}

TEST_F(ToastDisplayTest, MessageToastIsOpaqueForFourSeconds) {
    ToastWindow::show(u"Notice"_s);
    const xcb_window_t window = shownWindow<ToastWindow>();
    EXPECT_EQ(ToastStage::opacity(stage_.view(), window), 1.0);
    const Seen seen = watch(window);
    EXPECT_NEAR(seen.fades, 4000, 100);
    EXPECT_NEAR(seen.gone, 4300, 100);
}

TEST_F(ToastDisplayTest, FocusStaysWhereItIs) {
    showBackground();
    const xcb_window_t active = stage_.view().active();
    const xcb_window_t focused = stage_.focusedWindow();
    LaunchToastWindow::show(plainIcon(), LaunchToastDuration::Long);
    ToastWindow::show(u"Notice"_s, u"Do it"_s, [] {});
    const xcb_window_t toast = shownWindow<ToastWindow>();
    const QRect frame = current<ToastWindow>()->geometry();
    stage_.click(frame.center());
    ASSERT_TRUE(ToastStage::waitUntil([&] { return !current<LaunchToastWindow>(); }));
    EXPECT_TRUE(ToastStage::isMapped(stage_.view(), toast));
    EXPECT_EQ(stage_.view().active(), active);
    EXPECT_EQ(stage_.focusedWindow(), focused);
    EXPECT_EQ(QApplication::activeWindow(), &background_);
}

TEST_F(ToastDisplayTest, ClicksPassThroughWithoutAButton) {
    showBackground();
    LaunchToastWindow::show(plainIcon(), LaunchToastDuration::Long);
    (void)shownWindow<LaunchToastWindow>();
    stage_.click(current<LaunchToastWindow>()->geometry().center());
    EXPECT_TRUE(ToastStage::waitUntil([this] { return background_.clicks() == 1; }));
    ToastWindow::show(u"Notice"_s);
    (void)shownWindow<ToastWindow>();
    stage_.click(current<ToastWindow>()->geometry().center());
    EXPECT_TRUE(ToastStage::waitUntil([this] { return background_.clicks() == 2; }));
}

TEST_F(ToastDisplayTest, ButtonIsClicked) {
    showBackground();
    int runs = 0;
    ToastWindow::show(u"Notice"_s, u"Do it"_s, [&runs] { ++runs; });
    (void)shownWindow<ToastWindow>();
    const auto *button = current<ToastWindow>()->findChild<QPushButton *>();
    stage_.click(button->mapToGlobal(button->rect().center()));
    EXPECT_TRUE(ToastStage::waitUntil([&] { return runs == 1; }));
    EXPECT_EQ(background_.clicks(), 0);
    EXPECT_NE(current<ToastWindow>(), nullptr);
}

TEST_F(ToastDisplayTest, WithoutCompositingTheCornersAreCutOut) {
    showBackground();
    LaunchToastWindow::show(plainIcon(), LaunchToastDuration::Long);
    (void)shownWindow<LaunchToastWindow>();
    const QPoint corner = current<LaunchToastWindow>()->pos();
    EXPECT_TRUE(screenShows(corner + QPoint(96, 20),
                            [](const QColor &color) { return color == colors::hud(false); }));
    const QImage screen = ToastStage::screen();
    for (const QPoint &outside : {QPoint(0, 0), QPoint(191, 0), QPoint(0, 191), QPoint(191, 191),
                                  QPoint(6, 6), QPoint(185, 6), QPoint(6, 185), QPoint(185, 185)})
        EXPECT_EQ(screen.pixel(corner + outside), kBackgroundColor);
    // Nothing black on the way across the edge of a corner.
    for (int step = 0; step < 20; ++step)
        EXPECT_GT(qRed(screen.pixel(corner + QPoint(step, step))), 200);
    EXPECT_EQ(screen.pixelColor(corner + QPoint(96, 96)), QColor(Qt::blue));
}

TEST_F(ToastDisplayTest, WithCompositingTheBackgroundShowsThrough) {
    stage_.startCompositing();
    showBackground();
    ToastWindow::show(u"Notice"_s);
    (void)shownWindow<ToastWindow>();
    const QPoint corner = current<ToastWindow>()->pos();
    const QColor panel = colors::hud(true);
    const auto mixed = [&](int panelPart, int backgroundPart) {
        return panelPart * double(panel.alphaF()) + backgroundPart * (1 - double(panel.alphaF()));
    };
    EXPECT_TRUE(screenShows(corner + QPoint(380, 8), [&](const QColor &color) {
        return std::abs(color.red() - mixed(panel.red(), qRed(kBackgroundColor))) <= 3 &&
               std::abs(color.green() - mixed(panel.green(), qGreen(kBackgroundColor))) <= 3;
    }));
    EXPECT_EQ(ToastStage::screen().pixel(corner), kBackgroundColor);
}

TEST_F(ToastDisplayTest, ShowingIsCheap) {
    std::vector<double> milliseconds;
    for (int run = 0; run < 21; ++run) {
        QElapsedTimer timer;
        timer.start();
        LaunchToastWindow::show(plainIcon(), LaunchToastDuration::Short);
        milliseconds.push_back(double(timer.nsecsElapsed()) / 1e6);
        (void)shownWindow<LaunchToastWindow>();
    }
    std::ranges::sort(milliseconds);
    RecordProperty("median_us", static_cast<int>(milliseconds[10] * 1000));
    std::cout << "showing takes " << milliseconds[10] << " ms (median), " << milliseconds.back()
              << " ms at most\n";
    EXPECT_NE(current<LaunchToastWindow>(), nullptr);
}

/// Pictures for the eye, where the environment names a folder for them.
TEST_F(ToastDisplayTest, Pictures) {
    const QString folder = qEnvironmentVariable("KESTRELBAY_PICTURES");
    if (folder.isEmpty())
        GTEST_SKIP() << "KESTRELBAY_PICTURES names no folder";
    const QString texts[][2] = {
        {u"Accessibility permission required to record hotkeys"_s, u"Grant Access"_s},
        {u"需要辅助功能权限才能录入快捷键"_s, u"前往授权"_s},
        {u"Hotkey conflict: already used by another rule, please re-enter"_s, QString()},
        {u"点击状态栏的⚡️图标 → 偏好设置 进行快捷键配置"_s, QString()}};
    for (const bool composited : {false, true}) {
        if (composited)
            stage_.startCompositing();
        for (const ColorScheme scheme : {ColorScheme::Light, ColorScheme::Dark}) {
            QApplication::setPalette(systemPalette(scheme));
            background_.showFullScreen();
            for (int index = 0; index < 4; ++index) {
                LaunchToastWindow::show(plainIcon(), LaunchToastDuration::Long);
                ToastWindow::show(texts[index][0], texts[index][1], [] {});
                (void)shownWindow<ToastWindow>();
                const auto *launch = current<LaunchToastWindow>();
                ASSERT_TRUE(ToastStage::waitUntil([&] { return launch->windowOpacity() == 1.0; }));
                QElapsedTimer settle;
                settle.start();
                ASSERT_TRUE(ToastStage::waitUntil([&] { return settle.elapsed() > 200; }));
                EXPECT_TRUE(ToastStage::screen().save(
                    folder + u"/toast-%1-%2-%3.png"_s.arg(composited ? u"composited"_s : u"plain"_s)
                                 .arg(scheme == ColorScheme::Dark ? u"dark"_s : u"light"_s)
                                 .arg(index)));
            }
        }
    }
}

}  // namespace

}  // namespace kestrelbay
