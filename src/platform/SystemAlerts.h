#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "platform/NativeWindow.h"

namespace kestrelbay {

/// The alerts that the system lays out. Main thread.
class SystemAlerts {
public:
    struct Alert {
        QString message;
        QString text;
        /// The first button.
        QString acceptTitle;
        /// The second one, which is also for Escape; empty for none.
        QString rejectTitle;
        bool isWarning = false;
        /// Accepting destroys something.
        bool isDestructive = false;
    };

    /// One that is in view. Closes it, unanswered, when it goes.
    class Shown {
    public:
        Shown() = default;
        virtual ~Shown() = default;
        Shown(const Shown &) = delete;
        Shown &operator=(const Shown &) = delete;
    };

    virtual ~SystemAlerts() = default;

    /// Shows it as a sheet of the window, or where that is none (0) before all windows of the
    /// program, in which case this may wait for the answer. `answered` is called once, with
    /// true for the first button, and may let go of what this returns.
    [[nodiscard]] virtual std::unique_ptr<Shown> show(const Alert &alert, NativeWindow::Id window,
                                                      std::function<void(bool)> answered) = 0;
};

}  // namespace kestrelbay
