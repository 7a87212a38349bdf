#pragma once

#include <chrono>
#include <optional>

#include <QColor>
#include <QImage>
#include <QRect>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// What is to be seen at this place of the screen, whichever windows lie there.
/// A null image when the place is not on the screen.
[[nodiscard]] QImage pictureOf(XClient &client, const QRect &area);
/// The same in a window, in its own coordinates: what it has painted, even where a compositor is
/// late with it. A null image when the window is not in view as a whole.
[[nodiscard]] QImage pictureIn(XClient &client, xcb_window_t window, const QRect &area);
[[nodiscard]] QColor colorAt(XClient &client, const QPoint &place);

/// Is one clearly of another colour?
[[nodiscard]] bool differ(const QColor &a, const QColor &b);

/// The picture once it is the same as 100 ms before. None when it never comes to
/// rest within the time.
[[nodiscard]] std::optional<QImage> settledPictureOf(
    XClient &client, const QRect &area,
    std::chrono::milliseconds timeout = std::chrono::seconds(5));

/// The smallest rectangle with everything that is clearly not of the background's
/// colour; empty when there is nothing.
[[nodiscard]] QRect contentsOf(const QImage &picture, const QColor &background);

}  // namespace kestrelbay::desktop
