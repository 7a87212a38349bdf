#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include <QRect>
#include <QString>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// Watches the toasts come and go as the X server tells it.
class ToastWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    struct Toast {
        xcb_window_t window = XCB_NONE;
        QRect area = {};
        Time mapped = {};
        std::optional<Time> opaque = {};    ///< nothing shows through from here on …
        std::optional<Time> fading = {};    ///< … until here
        int steps = 0;                      ///< changes of its opacity
        std::optional<Time> unmapped = {};  ///< none while it is on screen
    };

    /// Sees what happens from now on.
    explicit ToastWatch(const QString &displayName);

    /// Device pixels to a point in the program that shows them.
    void setScale(double scale) { scale_ = scale; }

    /// In the order in which they appeared. As exact as this is called often.
    [[nodiscard]] const std::vector<Toast> &launchToasts();
    [[nodiscard]] const std::vector<Toast> &messageToasts();
    void forget();
    /// Does a window of that size show a message or an icon?
    [[nodiscard]] bool isToast(const QSize &size) const;

private:
    [[nodiscard]] bool isLaunchToast(const QSize &size) const;
    [[nodiscard]] bool isMessageToast(const QSize &size) const;
    void readEvents();
    void sawMap(xcb_window_t window);
    void sawOpacity(xcb_window_t window);
    void sawUnmap(xcb_window_t window);
    [[nodiscard]] Toast *onScreen(xcb_window_t window);

    XClient client_;
    double scale_ = 1;
    std::vector<Toast> launchToasts_;
    std::vector<Toast> messageToasts_;
};

}  // namespace kestrelbay::desktop
