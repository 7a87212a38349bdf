#include "preferences/advanced/SettingRow.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr int kTitleFont = 13;
constexpr int kSubtitleFont = 11;
constexpr int kButtonFont = 12;
/// What the style leaves around a text is little.
constexpr int kButtonPadding = 12;
constexpr int kTitleToSubtitle = 2;
constexpr int kTitleToSubtitleOfInfo = 4;
constexpr int kTextsToControl = 12;
constexpr qreal kRadius = 6;

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
}

void SettingRow::setBackground(const QColor &color) {
    background_ = color;
    update();
}

void SettingRow::paintEvent(QPaintEvent * /*event*/) {
    if (background_.alpha() == 0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background_);
    painter.drawRoundedRect(rect(), kRadius, kRadius);
}

QPushButton *makeSettingButton(const QString &title) {
    auto *const button = new QPushButton(title);
    button->setFont(systemFont(kButtonFont));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    button->setMinimumWidth(button->sizeHint().width() + kButtonPadding);
    button->setAutoDefault(false);
    return button;
}

}  // namespace kestrelbay
