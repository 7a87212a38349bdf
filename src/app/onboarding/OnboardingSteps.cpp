#include "app/onboarding/OnboardingSteps.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

#include "settings/L.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/look/WrappedText.h"
#include "ui/widgets/LinkButton.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr int kTextWidth = 412;
constexpr int kTitleWidth = 444;
constexpr int kTitleFont = 26;
constexpr int kBodyFont = 15;
constexpr int kStatusFont = 12;
constexpr int kPrimaryFont = 13;
constexpr int kPrimaryMinimumWidth = 180;

constexpr int kTitleTop = 10;
constexpr int kTitleToBody = 6;
constexpr int kBodyToTip = 8;
constexpr int kTextToButtons = 8;
constexpr int kStatusToPrimary = 6;
constexpr int kPrimaryToLink = 4;
constexpr int kBottom = 12;

TextLabel *centeredText(const QString &text, const QFont &font, colors::Function color) {
    auto *label = new TextLabel(text, font, std::move(color));
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    return label;
}

WrappingLabel *wrappedText(const QString &text, int fontSize, Qt::Alignment vertically) {
    auto *label = new WrappingLabel(text, systemFont(fontSize), colors::secondaryLabel);
    label->setAlignment(Qt::AlignHCenter | vertically);
    label->setFixedSize(kTextWidth, label->heightForWidth(kTextWidth));
    return label;
}

/// Nothing moves when it comes into view.
void keepRoom(QWidget &widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

bool isReturn(const QKeyEvent &event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

HeroImage::HeroImage(const QString &name) : pixmap_(QStringLiteral(":/hero/%1.png").arg(name)) {
    setFixedSize(468, 200);
}

void HeroImage::paintEvent(QPaintEvent * /*event*/) {
    // The files have two pixels to a point. A label would scale them in steps.
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), pixmap_);
}

OnboardingStep *OnboardingStep::welcome(QWidget *parent) {
    return new OnboardingStep({.hero = QStringLiteral("welcome_hero"),
                               .title = L::welcomeTitle(),
                               .body = L::welcomeBody(),
                               .tip = L::welcomeTip(),
                               .primary = L::welcomeStart(),
                               .link = L::welcomeDismiss()},
                              parent);
}

OnboardingStep *OnboardingStep::permission(QWidget *parent) {
    return new OnboardingStep({.hero = QStringLiteral("welcome_hero_p2"),
                               .title = L::permissionTitle(),
                               .body = L::permissionBody(),
                               .status = L::permissionWaiting(),
                               .primary = L::permissionOpenSettings(),
                               .link = L::skipForNow()},
                              parent);
}

OnboardingStep *OnboardingStep::permissionByExtension(QWidget *parent) {
    return new OnboardingStep({.hero = QStringLiteral("welcome_hero_p2"),
                               .title = L::permissionTitle(),
                               .body = L::permissionExtensionBody(),
                               .status = L::permissionWaiting(),
                               .primary = L::extensionInstall(),
                               .link = L::skipForNow()},
                              parent);
}

OnboardingStep *OnboardingStep::permissionThere(QWidget *parent) {
    return new OnboardingStep({.hero = QStringLiteral("welcome_hero_p2"),
                               .title = L::permissionThereTitle(),
                               .body = L::permissionThereBody(),
                               .primary = L::permissionThereContinue()},
                              parent);
}

OnboardingStep *OnboardingStep::done(bool permissionGranted, bool hasTray, QWidget *parent) {
    return new OnboardingStep(
        {.hero = QStringLiteral("welcome_hero_p3"),
         .title = permissionGranted ? L::doneTitle() : L::doneWithoutPermissionTitle(),
         .body = permissionGranted ? L::doneBody(hasTray) : L::doneWithoutPermissionBody(hasTray),
         .primary = permissionGranted ? L::doneAddShortcut() : L::doneOpenPreferences(),
         .link = L::skipForNow()},
        parent);
}

OnboardingStep::OnboardingStep(const Contents &contents, QWidget *parent)
    : QWidget(parent),
      primaryButton_(new QPushButton(contents.primary)),
      link_(new LinkButton(contents.link)) {
    primaryButton_->setFont(systemFont(kPrimaryFont, QFont::Medium));
    primaryButton_->setDefault(true);
    primaryButton_->setMinimumWidth(kPrimaryMinimumWidth);
    for (QWidget *control : {static_cast<QWidget *>(this), static_cast<QWidget *>(primaryButton_),
                             static_cast<QWidget *>(link_)})
        control->installEventFilter(this);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, kBottom);
    layout->setSpacing(0);
    layout->addWidget(new HeroImage(contents.hero));
    layout->addSpacing(kTitleTop);
    layout->addStretch(2);
    const QFont titleFont =
        fittingFont(contents.title, systemFont(kTitleFont, QFont::Bold), kTitleWidth);
    layout->addWidget(centeredText(contents.title, titleFont, colors::label));
    layout->addSpacing(kTitleToBody);
    layout->addWidget(wrappedText(contents.body, kBodyFont, Qt::AlignTop), 0, Qt::AlignHCenter);
    if (!contents.tip.isEmpty()) {
        layout->addSpacing(kBodyToTip);
        layout->addWidget(wrappedText(contents.tip, kBodyFont, Qt::AlignTop), 0, Qt::AlignHCenter);
    }
    layout->addStretch(3);
    layout->addSpacing(kTextToButtons);
    if (!contents.status.isEmpty()) {
        statusLabel_ = wrappedText(contents.status, kStatusFont, Qt::AlignBottom);
        statusLabel_->setFixedHeight(
            wrappedTextHeight(QStringLiteral("\n"), statusLabel_->font(), kTextWidth));
        keepRoom(*statusLabel_);
        layout->addWidget(statusLabel_, 0, Qt::AlignHCenter);
        statusLabel_->hide();
        layout->addSpacing(kStatusToPrimary);
    }
    layout->addWidget(primaryButton_, 0, Qt::AlignHCenter);
    layout->addSpacing(kPrimaryToLink);
    keepRoom(*link_);
    link_->setHidden(contents.link.isEmpty());
    layout->addWidget(link_, 0, Qt::AlignHCenter);
}

void OnboardingStep::keyPressEvent(QKeyEvent *event) {
    if (isReturn(*event))
        primaryButton_->click();
    else
        QWidget::keyPressEvent(event);
}

bool OnboardingStep::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::KeyPress) {
        const auto &key = *static_cast<QKeyEvent *>(event);
        if (isReturn(key) && key.isAutoRepeat())
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace kestrelbay
