#include "desktop/display/Picture.h"

#include <cstdlib>
#include <cstring>

#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kRest{100};
/// Of each of the three colours, from 0 to 255.
constexpr int kClearly = 40;

}  // namespace

bool differ(const QColor &a, const QColor &b) {
    return std::abs(a.red() - b.red()) > kClearly || std::abs(a.green() - b.green()) > kClearly ||
           std::abs(a.blue() - b.blue()) > kClearly;
}

QImage pictureOf(XClient &client, const QRect &area) {
    return pictureIn(client, client.root(), area);
}

QImage pictureIn(XClient &client, xcb_window_t window, const QRect &area) {
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        client.get(),
        xcb_get_image(client.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                      static_cast<std::int16_t>(area.x()), static_cast<std::int16_t>(area.y()),
                      static_cast<std::uint16_t>(area.width()),
                      static_cast<std::uint16_t>(area.height()), ~0U),
        nullptr));
    QImage image(area.size(), QImage::Format_RGB32);
    // Private servers have 24 bits of colour, each pixel in four bytes.
    if (!reply || xcb_get_image_data_length(reply.get()) != image.sizeInBytes())
        return {};
    std::memcpy(image.bits(), xcb_get_image_data(reply.get()),
                static_cast<std::size_t>(image.sizeInBytes()));
    // The fourth byte says nothing.
    return image.convertToFormat(QImage::Format_RGB888);
}

QColor colorAt(XClient &client, const QPoint &place) {
    const QImage pixel = pictureOf(client, QRect(place, QSize(1, 1)));
    return pixel.isNull() ? QColor() : pixel.pixelColor(0, 0);
}

std::optional<QImage> settledPictureOf(XClient &client, const QRect &area,
                                       std::chrono::milliseconds timeout) {
    QImage last = pictureOf(client, area);
    Clock::time_point since = Clock::now();
    const auto atRest = [&] {
        if (Clock::now() - since < kRest)
            return false;
        QImage next = pictureOf(client, area);
        if (next == last && !next.isNull())
            return true;
        last = std::move(next);
        since = Clock::now();
        return false;
    };
    return testing::waitUntil(atRest, timeout) ? std::optional(last) : std::nullopt;
}

QRect contentsOf(const QImage &picture, const QColor &background) {
    QRect found;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (differ(picture.pixelColor(x, y), background))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

}  // namespace kestrelbay::desktop
