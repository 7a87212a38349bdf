#include "app/toasts/LaunchToastWindow.h"

#include <QPainter>
#include <QPointer>
#include <QScreen>

#include <chrono>

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

struct Timing {
    std::chrono::milliseconds fadeIn;
    std::chrono::milliseconds hold;
    std::chrono::milliseconds fadeOut;
};

Timing timing(LaunchToastDuration duration) {
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

}  // namespace

QImage inSquare(const QImage &picture, int side) {
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QRectF target(QPointF(), QSizeF(picture.size()).scaled(square.size(), Qt::KeepAspectRatio));
    target.moveCenter(QRectF(square.rect()).center());
    QPainter painter(&square);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, picture);
    return square;
}

void LaunchToastWindow::show(const QImage &appIcon, LaunchToastDuration duration) {
    if (duration == LaunchToastDuration::None || !services())
        return;
    static QPointer<LaunchToastWindow> current;
    if (current)
        current->dismissImmediate();
    QScreen *const screen = activeScreen(services()->nativeWindow);
    current = new LaunchToastWindow(appIcon, screen);
    current->present(screen, duration);
}

LaunchToastWindow::LaunchToastWindow(const QImage &appIcon, QScreen *screen)
    : ToastPanel(kIconToastRadius, Input::PassesThrough) {
    setPanelSize({kSide, kSide});
    const qreal ratio = screen ? screen->devicePixelRatio() : 1;
    icon_ = inSquare(appIcon, qRound(kIconSide * ratio));
    icon_.setDevicePixelRatio(ratio);
}

void LaunchToastWindow::present(QScreen *screen, LaunchToastDuration duration) {
    const auto [fadeIn, hold, fadeOut] = timing(duration);
    setWindowOpacity(0);
    showOnTop(screen, screen ? topLeft(screen->availableGeometry()) : pos());
    fade(1, fadeIn);
    fadeOutAfter(fadeIn + hold, fadeOut);
}

void LaunchToastWindow::dismissImmediate() {
    setWindowOpacity(0);
    closePanel();
}

void LaunchToastWindow::paintEvent(QPaintEvent *event) {
    ToastPanel::paintEvent(event);
    QPainter painter(this);
    painter.drawImage(kIconCorner, icon_);
}

}  // namespace kestrelbay
