#pragma once

#include <functional>

#include <QString>

#include "app/toasts/ToastPanel.h"

namespace kestrelbay {

/// A short message, with a button at will, shown for four seconds. There is one at a
/// time.
class ToastWindow final : public ToastPanel {
    Q_OBJECT

public:
    /// Takes the place of the one on screen, if any. A button needs both a title and
    /// an action, and pressing it does not close the toast. Shows nothing without
    /// services. Any thread; the action runs on the main thread.
    static void show(const QString &message, const QString &actionTitle = {},
                     const std::function<void()> &action = {});

private:
    ToastWindow(const QString &message, const QString &actionTitle,
                const std::function<void()> &action);

    void present();
};

}  // namespace kestrelbay
