#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QWidget>

#include "app/toasts/LaunchToastWindow.h"
#include "app/toasts/ToastWindow.h"
#include "desktop/display/WindowManagerView.h"
#include "platform/linux/x11/panels/X11NativeWindow.h"
#include "support/ChildProcess.h"
#include "tasks/DispatchQueue.h"
#include "tasks/Timers.h"

namespace kestrelbay {

/// Toasts on this process's X server, and another client that looks at them.
class ToastStage {
public:
    ToastStage();
    ~ToastStage();
    ToastStage(const ToastStage &) = delete;
    ToastStage &operator=(const ToastStage &) = delete;

    /// Has translucent windows shown as such until the stage ends.
    void startCompositing();

    [[nodiscard]] desktop::WindowManagerView &view() { return view_; }
    [[nodiscard]] xcb_window_t focusedWindow();
    /// What another client sees of a toast's window now.
    [[nodiscard]] static bool isMapped(desktop::WindowManagerView &view, xcb_window_t window);
    /// 0 to 1; 1 for a window that has none.
    [[nodiscard]] static double opacity(desktop::WindowManagerView &view, xcb_window_t window);

    /// The picture on the screen.
    [[nodiscard]] static QImage screen();
    void click(const QPoint &where);

    /// Runs the event loop as the program does until the condition holds, asking every
    /// millisecond. False when it never did within the time.
    [[nodiscard]] static bool waitUntil(
        const std::function<bool()> &condition,
        std::chrono::milliseconds timeout = std::chrono::seconds(10));

private:
    QtTimers timers_;
    MainQueue mainQueue_;
    x11::X11NativeWindow nativeWindow_;
    ToastPanel::Services services_;
    desktop::WindowManagerView view_;
    std::unique_ptr<testing::ChildProcess> compositor_;
};

}  // namespace kestrelbay
