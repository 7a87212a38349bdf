#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include <QWidget>

#include "tasks/Timers.h"

class QPropertyAnimation;

namespace kestrelbay {

class DispatchQueue;
class NativeWindow;

/// A rounded panel that floats over the windows of all programs for a moment, on every
/// workspace, and never takes the focus. Main thread unless said otherwise.
class ToastPanel : public QWidget {
    Q_OBJECT

public:
    struct Services {
        NativeWindow &nativeWindow;
        Timers &timers;
        DispatchQueue &mainQueue;
    };

    /// What all toasts work with; null takes it away. Either way what is on screen is
    /// closed. Has to outlive the calls of other threads that show a toast.
    static void setServices(const Services *services);

    ~ToastPanel() override;

protected:
    enum class Input : std::uint8_t { PassesThrough, IsAccepted };

    ToastPanel(int cornerRadius, Input input);

    /// Before it is ordered front.
    void setPanelSize(const QSize &size);

    /// Null when there are none. Any thread.
    [[nodiscard]] static const Services *services();

    /// Puts the panel on the screen, before all windows, at its opacity of the moment.
    /// The corner is in device-independent pixels of the desktop.
    void showOnTop(QScreen *screen, const QPoint &topLeft);
    /// Runs the opacity from where it is, slow at both ends. After exactly this time
    /// it is there and `done` is called, unless the panel was closed or faded anew.
    void fade(qreal opacity, std::chrono::milliseconds duration, std::function<void()> done = {});
    /// Closes the panel that much later, unless it is closed before.
    void fadeOutAfter(std::chrono::milliseconds delay, std::chrono::milliseconds duration);
    /// Off the screen at once. The object goes with the next turn of the event loop.
    void closePanel();

    void paintEvent(QPaintEvent *event) override;

private:
    const Services &services_;
    const int cornerRadius_;
    const bool isTranslucent_;
    QPropertyAnimation *opacityAnimation_;
    std::unique_ptr<Timers::Timer> fadeEnd_;
    std::unique_ptr<Timers::Timer> dismissWork_;
};

}  // namespace kestrelbay
