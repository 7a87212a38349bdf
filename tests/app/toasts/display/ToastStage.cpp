#include "app/toasts/display/ToastStage.h"

#include <limits>
#include <stdexcept>

#include <QEventLoop>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include <xcb/xtest.h>

namespace kestrelbay {

namespace {
QString displayName() {
    return qEnvironmentVariable("DISPLAY");
}
}  // namespace

bool ToastStage::waitUntil(const std::function<bool()> &condition,
                           std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    QEventLoop loop;
    bool holds = condition();
    QTimer ask;
    ask.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ask, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds || std::chrono::steady_clock::now() > deadline)
            loop.quit();
    });
    ask.start(1);
    if (!holds)
        loop.exec();
    return holds;
}

ToastStage::ToastStage()
    : nativeWindow_(displayName()),
      services_{nativeWindow_, timers_, mainQueue_},
      view_(displayName()) {
    ToastPanel::setServices(&services_);
}

ToastStage::~ToastStage() {
    ToastPanel::setServices(nullptr);
    if (!compositor_)
        return;
    compositor_.reset();
    // The next stage has to find the server without one.
    if (!waitUntil([this] { return !nativeWindow_.isTranslucencyShown(); }))
        qFatal("the compositing manager did not go");
}

void ToastStage::startCompositing() {
    compositor_ = std::make_unique<testing::ChildProcess>(
        QStringLiteral("picom"),
        QStringList{QStringLiteral("--config"), QStringLiteral("/dev/null"),
                    QStringLiteral("--backend"), QStringLiteral("xrender")},
        QProcessEnvironment::systemEnvironment());
    if (!waitUntil([this] { return nativeWindow_.isTranslucencyShown(); }))
        throw std::runtime_error("the compositing manager did not start");
}

xcb_window_t ToastStage::focusedWindow() {
    xcb_connection_t *c = view_.client().get();
    const desktop::Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

bool ToastStage::isMapped(desktop::WindowManagerView &view, xcb_window_t window) {
    xcb_connection_t *c = view.client().get();
    const desktop::Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

double ToastStage::opacity(desktop::WindowManagerView &view, xcb_window_t window) {
    const auto values = view.client().numbers(window, "_NET_WM_WINDOW_OPACITY");
    return values.empty() ? 1.0
                          : double(values.front()) / std::numeric_limits<std::uint32_t>::max();
}

QImage ToastStage::screen() {
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

void ToastStage::click(const QPoint &where) {
    xcb_connection_t *c = view_.client().get();
    const auto x = static_cast<std::int16_t>(where.x());
    const auto y = static_cast<std::int16_t>(where.y());
    xcb_test_fake_input(c, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, view_.client().root(), x, y, 0);
    xcb_test_fake_input(c, XCB_BUTTON_PRESS, 1, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(c, XCB_BUTTON_RELEASE, 1, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    view_.client().sync();
}

}  // namespace kestrelbay
