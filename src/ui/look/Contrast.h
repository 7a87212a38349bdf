#pragma once

#include <QColor>

namespace kestrelbay {

/// The ink laid over the ground, as thick as `alpha` says, from 0 to 1. Of the ink's own alpha
/// nothing is asked; the ground keeps its.
[[nodiscard]] QColor overlaid(const QColor &ground, const QColor &ink, qreal alpha);

/// From 1, the same, to 21, black and white: as WCAG 2.1 counts it. What shines through of the
/// ink's ground is counted in.
[[nodiscard]] double contrastRatio(const QColor &ink, const QColor &ground);

/// The colour itself where its contrast with the ground is as high as asked for; otherwise the
/// nearest darker or lighter one of which that is true.
[[nodiscard]] QColor legible(const QColor &color, const QColor &ground, double ratio);

}  // namespace kestrelbay
