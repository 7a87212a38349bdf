#include "ui/look/Contrast.h"

#include <algorithm>
#include <cmath>

namespace kestrelbay {

namespace {

double luminance(const QColor &color) {
    const auto linear = [](float part) {
        return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

}  // namespace

QColor overlaid(const QColor &ground, const QColor &ink, qreal alpha) {
    const auto mix = [alpha](float below, float above) {
        return static_cast<float>(below * (1 - alpha) + above * alpha);
    };
    return QColor::fromRgbF(mix(ground.redF(), ink.redF()), mix(ground.greenF(), ink.greenF()),
                            mix(ground.blueF(), ink.blueF()), ground.alphaF());
}

double contrastRatio(const QColor &ink, const QColor &ground) {
    const double one = luminance(overlaid(ground, ink, ink.alphaF()));
    const double other = luminance(ground);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor legible(const QColor &color, const QColor &ground, double ratio) {
    constexpr int kSteps = 25;
    const QColor end = luminance(ground) > 0.18 ? Qt::black : Qt::white;
    for (int step = 0; step < kSteps; ++step) {
        // As pixels have it.
        const QColor changed = QColor::fromRgba(overlaid(color, end, qreal(step) / kSteps).rgba());
        if (contrastRatio(changed, ground) >= ratio)
            return changed;
    }
    return end;
}

}  // namespace kestrelbay
