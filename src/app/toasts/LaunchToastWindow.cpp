#include "app/toasts/LaunchToastWindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QScreen>

#include <chrono>

#include "app/toasts/IconImage.h"
#include "ui/look/Screens.h"

namespace kestrelbay {

using namespace std::chrono_literals;

namespace {

constexpr int kSide = 192;
constexpr int kIconToastRadius = 28;
constexpr QPoint kIconCorner{60, 60};

/// Centred, with its lower edge a sixth up the area that is free of panels and docks.
QPoint topLeft(const QRect &available) {
    const QRectF area(available);
    return QPointF(area.left() + (area.width() - kSide) / 2,
                   area.bottom() - area.height() / 6 - kSide)
        .toPoint();
}

}  // namespace

struct LaunchToastWindow::Timing {
    std::chrono::milliseconds fadeIn;
    std::chrono::milliseconds hold;
    std::chrono::milliseconds fadeOut;
};

LaunchToastWindow *LaunchToastWindow::current = nullptr;

LaunchToastWindow::Timing LaunchToastWindow::timing(LaunchToastDuration duration) {
    switch (duration) {
        case LaunchToastDuration::None:
            break;
        case LaunchToastDuration::Short:
            return {.fadeIn = 80ms, .hold = 250ms, .fadeOut = 120ms};
        case LaunchToastDuration::Medium:
            return {.fadeIn = 100ms, .hold = 500ms, .fadeOut = 250ms};
        case LaunchToastDuration::Long:
            return {.fadeIn = 150ms, .hold = 900ms, .fadeOut = 450ms};
    }
    return {};
}

void LaunchToastWindow::show(const QIcon &appIcon, LaunchToastDuration duration) {
    if (duration == LaunchToastDuration::None || !services())
        return;
    if (current)
        current->dismissImmediate();
    QScreen *screen = keyScreen(services()->nativeWindow);
    current = new LaunchToastWindow(appIcon, screen);
    current->present(screen, timing(duration));
}

LaunchToastWindow::LaunchToastWindow(const QIcon &appIcon, QScreen *screen)
    : ToastPanel(kIconToastRadius, Input::PassesThrough) {
    setPanelSize({kSide, kSide});
    const qreal ratio = screen ? screen->devicePixelRatio() : 1;
    icon_ = iconImage(appIcon, qRound(kIconSide * ratio));
    icon_.setDevicePixelRatio(ratio);
}

LaunchToastWindow::~LaunchToastWindow() {
    if (current == this)
        current = nullptr;
}

void LaunchToastWindow::present(QScreen *screen, const Timing &timing) {
    setWindowOpacity(0);
    orderFront(screen, screen ? topLeft(screen->availableGeometry()) : pos());
    fade(1, timing.fadeIn);
    dismissWork = later(timing.fadeIn + timing.hold, [this, fadeOut = timing.fadeOut] {
        fade(0, fadeOut, [this] { finish(); });
    });
}

void LaunchToastWindow::dismissImmediate() {
    dismissWork.reset();
    setWindowOpacity(0);
    finish();
}

void LaunchToastWindow::finish() {
    closePanel();
    if (current == this)
        current = nullptr;
}

void LaunchToastWindow::paintEvent(QPaintEvent *event) {
    ToastPanel::paintEvent(event);
    QPainter painter(this);
    painter.drawImage(kIconCorner, icon_);
}

}  // namespace kestrelbay
