#include "preferences/advanced/SettingRow.h"

#include <array>
#include <chrono>

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/look/Drawing.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

using namespace std::chrono_literals;

constexpr int kTitleFont = 13;
constexpr int kSubtitleFont = 11;
constexpr int kTitleToSubtitle = 2;
constexpr int kTitleToSubtitleOfInfo = 4;
constexpr int kTextsToControl = 12;
constexpr qreal kRadius = 6;

constexpr std::chrono::milliseconds kFade{200};
constexpr float kFlashAlpha = 0.28F;

struct FlashStep {
    std::chrono::milliseconds start;
    float alpha;
};
constexpr std::array kFlashSteps{FlashStep{0ms, kFlashAlpha}, FlashStep{250ms, 0},
                                 FlashStep{500ms, kFlashAlpha}, FlashStep{850ms, 0}};

}  // namespace

SettingRow::SettingRow(const QString &title, const QString &subtitle, QWidget *control)
    : control_(control) {
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(control ? kTitleToSubtitle : kTitleToSubtitleOfInfo);
    auto *const titleLabel =
        new TextLabel(title, systemFont(kTitleFont, QFont::Medium), colors::label);
    texts->addWidget(titleLabel);
    texts->addWidget(
        new WrappingLabel(subtitle, systemFont(kSubtitleFont), colors::secondaryLabel));

    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(kTextsToControl);
    layout->addLayout(texts, 1);
    if (control) {
        control->setAccessibleName(title);
        control->setAccessibleDescription(subtitle);
        // On some systems the name of a popup is what is chosen in it.
        titleLabel->setBuddy(control);
        layout->addWidget(control, 0, Qt::AlignVCenter);
    }

    fade_.setDuration(static_cast<int>(kFade.count()));
    connect(&fade_, &QVariantAnimation::valueChanged, this, [this](const QVariant &alpha) {
        background_ = withAlpha(colors::systemOrange(), alpha.toFloat());
        update();
    });
}

void SettingRow::flash(Timers &timers) {
    fade_.stop();
    flashSteps_.clear();
    for (const FlashStep &step : kFlashSteps)
        flashSteps_.push_back(
            timers.once(step.start, [this, alpha = step.alpha] { fadeTo(alpha); }));
}

void SettingRow::fadeTo(float alpha) {
    fade_.stop();
    fade_.setStartValue(background_.alphaF());
    fade_.setEndValue(alpha);
    fade_.start();
}

void SettingRow::paintEvent(QPaintEvent * /*event*/) {
    if (background_.alpha() == 0)
        return;
    QPainter painter(this);
    drawRounded(painter, rect(), kRadius, background_);
}

}  // namespace kestrelbay
