#include "preferences/advanced/RowFlash.h"

#include <array>
#include <chrono>

#include "preferences/advanced/SettingRow.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kFade{200};
constexpr float kAlpha = 0.28F;

struct Step {
    std::chrono::milliseconds start;
    float alpha;
};
constexpr std::array kSteps{Step{0ms, kAlpha}, Step{250ms, 0}, Step{500ms, kAlpha}, Step{850ms, 0}};

QColor orange(float alpha) {
    QColor color = colors::systemOrange();
    color.setAlphaF(alpha);
    return color;
}

}  // namespace

RowFlash::RowFlash(SettingRow *row, Timers &timers) : QObject(row), row_(*row) {
    fade_.setDuration(static_cast<int>(kFade.count()));
    connect(&fade_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { row_.setBackground(orange(value.toFloat())); });
    for (const Step &step : kSteps)
        steps_.push_back(timers.once(step.start, [this, alpha = step.alpha] { fadeTo(alpha); }));
}

void RowFlash::fadeTo(float alpha) {
    fade_.stop();
    fade_.setStartValue(row_.background().alphaF());
    fade_.setEndValue(alpha);
    fade_.start();
}

}  // namespace kestrelbay
