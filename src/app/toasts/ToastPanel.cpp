#include "app/toasts/ToastPanel.h"

#include <atomic>
#include <utility>

#include <QPropertyAnimation>
#include <QSet>
#include <QWindow>

#include "platform/NativeWindow.h"
#include "ui/look/Drawing.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

std::atomic<const ToastPanel::Services *> sharedServices;

/// Those on screen, and those that are closed and wait to be deleted.
QSet<ToastPanel *> &panels() {
    static QSet<ToastPanel *> all;
    return all;
}

}  // namespace

void ToastPanel::setServices(const Services *services) {
    sharedServices = services;
    // Not put off: there may be no event loop any more.
    qDeleteAll(QSet<ToastPanel *>(panels()));
}

const ToastPanel::Services *ToastPanel::services() {
    return sharedServices;
}

ToastPanel::ToastPanel(int cornerRadius, Input input)
    // Not a tool tip, though that is left alone by window managers too: Qt 6.4 makes its
    // window anew when it is shown, and lets no input through the new one.
    : QWidget(nullptr, Qt::Tool | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint |
                           (input == Input::PassesThrough ? Qt::WindowTransparentForInput
                                                          : Qt::WindowFlags())),
      services_(*services()),
      cornerRadius_(cornerRadius),
      isTranslucent_(services_.nativeWindow.isTranslucencyShown()),
      opacityAnimation_(new QPropertyAnimation(this, "windowOpacity", this)) {
    panels().insert(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_TranslucentBackground, isTranslucent_);
    opacityAnimation_->setEasingCurve(QEasingCurve::InOutQuad);
    // Qt sends a new opacity to the X server only along with something painted.
    connect(opacityAnimation_, &QPropertyAnimation::valueChanged, this,
            [this] { update(QRect(rect().center(), QSize(1, 1))); });
}

ToastPanel::~ToastPanel() {
    panels().remove(this);
}

void ToastPanel::setPanelSize(const QSize &size) {
    setFixedSize(size);
}

void ToastPanel::showOnTop(QScreen *screen, const QPoint &topLeft) {
    if (screen)
        setScreen(screen);
    move(topLeft);
    create();
    const NativeWindow::Id id = windowHandle()->winId();
    services_.nativeWindow.makeFloatingPanel(id);
    if (isTranslucent_)
        services_.nativeWindow.setBehindWindowMaterial(id, rect(), cornerRadius_);
    else
        services_.nativeWindow.cutToRoundedRectangle(id, rect(), cornerRadius_);
    show();
}

void ToastPanel::fade(qreal opacity, std::chrono::milliseconds duration,
                      std::function<void()> done) {
    opacityAnimation_->stop();
    opacityAnimation_->setStartValue(windowOpacity());
    opacityAnimation_->setEndValue(opacity);
    opacityAnimation_->setDuration(static_cast<int>(duration.count()));
    opacityAnimation_->start();
    // The animation's frames come when they can; its end has to come in time.
    fadeEnd_ = services_.timers.once(duration, [this, opacity, done = std::move(done)] {
        opacityAnimation_->stop();
        setWindowOpacity(opacity);
        update();
        if (done)
            done();
    });
}

void ToastPanel::fadeOutAfter(std::chrono::milliseconds delay, std::chrono::milliseconds duration) {
    dismissWork_ = services_.timers.once(
        delay, [this, duration] { fade(0, duration, [this] { closePanel(); }); });
}

void ToastPanel::closePanel() {
    opacityAnimation_->stop();
    fadeEnd_.reset();
    dismissWork_.reset();
    close();
    deleteLater();
}

void ToastPanel::paintEvent(QPaintEvent *) {
    if (isTranslucent_ && services_.nativeWindow.isMaterialAGround())
        return;
    QPainter painter(this);
    if (isTranslucent_) {
        drawRounded(painter, rect(), cornerRadius_, colors::toast(true));
        return;
    }
    // The window ends where it was cut, which is as rough as the pixels of the screen; so
    // the border reaches beyond it and only its inner side is smooth.
    painter.fillRect(rect(), colors::toast(false));
    painter.fillRect(rect(), colors::separator());
    drawRounded(painter, rect().adjusted(1, 1, -1, -1), cornerRadius_ - 1, colors::toast(false));
}

}  // namespace kestrelbay
