#pragma once

#include <memory>

#include <QImage>

#include "app/toasts/ToastPanel.h"
#include "settings/SettingsKeys.h"

class QIcon;

namespace kestrelbay {

/// The icon of the application that a hotkey has just brought up, shown for a moment
/// on the screen at which the user looks. There is one at a time. Main thread.
class LaunchToastWindow final : public ToastPanel {
    Q_OBJECT

public:
    /// In device-independent pixels.
    static constexpr int kIconSide = 72;

    /// Takes the place of the one on screen, if any. Shows nothing for None or
    /// without services.
    static void show(const QIcon &appIcon, LaunchToastDuration duration);

    ~LaunchToastWindow() override;

    /// Without fading out.
    void dismissImmediate();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Timing;

    LaunchToastWindow(const QIcon &appIcon, QScreen *screen);

    [[nodiscard]] static Timing timing(LaunchToastDuration duration);
    void present(QScreen *screen, const Timing &timing);
    void finish();

    static LaunchToastWindow *current;

    QImage icon_;
    std::unique_ptr<Timers::Timer> dismissWork;
};

}  // namespace kestrelbay
