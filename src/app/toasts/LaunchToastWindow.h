#pragma once

#include <QImage>

#include "app/toasts/ToastPanel.h"
#include "settings/SettingsKeys.h"

namespace kestrelbay {

/// The picture fitted into a square of this many pixels, scaled up or down in proportion
/// and centred, transparent around. A null picture gives an empty square.
[[nodiscard]] QImage inSquare(const QImage &picture, int side);

/// The icon of the application that a hotkey has just brought up, shown for a moment
/// on the screen at which the user looks. There is one at a time. Main thread.
class LaunchToastWindow final : public ToastPanel {
    Q_OBJECT

public:
    /// In device-independent pixels.
    static constexpr int kIconSide = 72;

    /// Takes the place of the one on screen, if any. Shows nothing for None or
    /// without services.
    static void show(const QImage &appIcon, LaunchToastDuration duration);

    /// Without fading out.
    void dismissImmediate();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    LaunchToastWindow(const QImage &appIcon, QScreen *screen);

    void present(QScreen *screen, LaunchToastDuration duration);

    QImage icon_;
};

}  // namespace kestrelbay
