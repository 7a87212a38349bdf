#pragma once

#include <QIcon>
#include <QImage>

namespace kestrelbay {

/// The icon fitted into a square of this many device pixels, scaled up or down in
/// proportion and centred, transparent around. Any thread, as far as the icon's engine
/// bears it. A null icon gives an empty square.
[[nodiscard]] QImage iconImage(const QIcon &icon, int side);

/// An icon that only has to be copied to the screen. Any thread, and needs no
/// QGuiApplication.
[[nodiscard]] QIcon iconOfImage(const QImage &image);

}  // namespace kestrelbay
