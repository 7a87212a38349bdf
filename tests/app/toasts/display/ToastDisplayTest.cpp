#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QWindow>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "app/toasts/display/ToastStage.h"
#include "fixtures/QtPrinters.h"
#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;
using Clock = std::chrono::steady_clock;

constexpr QRgb kBackgroundColor = qRgb(220, 30, 30);

QImage plainIcon(Qt::GlobalColor color = Qt::blue) {
    QImage image(72, 72, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
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
    double stepsIn = 0;
    double stepsOut = 0;
};

/// Follows a window that was just shown until it is gone, from a thread and a
/// connection of its own. In milliseconds from when it first saw the window.
Seen watch(xcb_window_t window) {
    Seen seen;
    std::atomic<bool> isGone = false;
    std::thread watcher([&] {
        desktop::WindowManagerView view(qEnvironmentVariable("DISPLAY"));
        const auto asked = Clock::now();
        while (!ToastStage::isMapped(view, window) && Clock::now() - asked < 5s)
            std::this_thread::yield();
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

/// Of the runs; what another process on the machine does to one of them leaves it alone.
template <typename Member>
double median(std::vector<Seen> runs, Member member) {
    const auto middle = runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2);
    std::ranges::nth_element(runs, middle, {}, member);
    return (*middle).*member;
}

TEST_F(ToastDisplayTest, LaunchToastKeepsItsTimesWithinAFrame) {
    constexpr double kFrame = 16;
    constexpr int kRuns = 7;
    for (const Times &times : kTimes) {
        std::vector<Seen> runs;
        for (int run = 0; run < kRuns; ++run) {
            LaunchToastWindow::show(plainIcon(), times.duration);
            runs.push_back(watch(windowOf(*current<LaunchToastWindow>())));
        }
        const double opaque = median(runs, &Seen::opaque);
        const double fades = median(runs, &Seen::fades);
        const double gone = median(runs, &Seen::gone);
        std::cout << "opaque " << opaque << ", fades " << fades << ", gone " << gone << " ms\n";
        EXPECT_NEAR(opaque, double(times.opaque.count()), kFrame);
        // The fade begins so slowly that its second frame is the first to be seen.
        EXPECT_NEAR(fades, double(times.fades.count()), 2 * kFrame);
        EXPECT_NEAR(gone, double(times.gone.count()), kFrame);
        EXPECT_GE(median(runs, &Seen::stepsIn), 3);
        EXPECT_GE(median(runs, &Seen::stepsOut), 3);
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
                            [](const QColor &color) { return color == colors::toast(false); }));
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
    const QColor panel = colors::toast(true);
    const auto mixed = [&](int panelPart, int backgroundPart) {
        return panelPart * double(panel.alphaF()) + backgroundPart * (1 - double(panel.alphaF()));
    };
    EXPECT_TRUE(screenShows(corner + QPoint(380, 8), [&](const QColor &color) {
        return std::abs(color.red() - mixed(panel.red(), qRed(kBackgroundColor))) <= 3 &&
               std::abs(color.green() - mixed(panel.green(), qGreen(kBackgroundColor))) <= 3;
    }));
    EXPECT_EQ(ToastStage::screen().pixel(corner), kBackgroundColor);
}

}  // namespace

}  // namespace kestrelbay
