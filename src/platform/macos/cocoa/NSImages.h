#pragma once

#include <QImage>
#include <QSize>

@class NSImage;

namespace kestrelbay {

/// A picture of that many pixels with the image as large as fits into its middle, on
/// nothing. Null for nil. Any thread.
[[nodiscard]] QImage toQImage(NSImage *image, QSize pixels);

}  // namespace kestrelbay
