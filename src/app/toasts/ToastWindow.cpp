#include "app/toasts/ToastWindow.h"

#include <QAccessible>
#include <QPointer>
#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <chrono>

#include "tasks/DispatchQueue.h"
#include "ui/look/Fonts.h"
#include "ui/look/Screens.h"
#include "ui/look/SystemColors.h"
#include "ui/look/WrappedText.h"
#include "ui/widgets/AccessibleFactory.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds kStay = 4000ms;
constexpr std::chrono::milliseconds kFadeOut = 300ms;

constexpr int kWidth = 420;
constexpr int kMinimumHeight = 56;
constexpr int kVerticalPadding = 28;
constexpr int kCornerRadius = 12;
constexpr int kTextLeft = 16;
constexpr int kTextWidth = 388;
constexpr int kTextWidthBesideButton = 308;
constexpr int kFontSize = 13;
/// Room for two lines of any font.
constexpr int kMaximumTextHeight = 2 * 3 * kFontSize / 2;
constexpr int kButtonFontSize = 12;
constexpr int kButtonMargin = 12;
constexpr int kButtonPadding = 16;
constexpr int kMinimumButtonWidth = 60;
/// Left of the text, between it and the button, and right of the button.
constexpr int kMarginsAroundButton = 44;

bool hasButton(const QString &title, const std::function<void()> &action) {
    return action && !title.isEmpty();
}

QPushButton *makeButton(const QString &title, const std::function<void()> &action,
                        QWidget *parent) {
    auto *button = new QPushButton(title, parent);
    button->setFont(systemFont(kButtonFontSize, QFont::Medium));
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoDefault(false);
    const QSize fitted = button->sizeHint();
    button->setFixedSize(std::max(fitted.width() + kButtonPadding, kMinimumButtonWidth),
                         fitted.height());
    QObject::connect(button, &QPushButton::clicked, button, action);
    return button;
}

/// Centred, with its lower edge three quarters up the whole screen.
QPoint topLeft(const QRect &screen, int height) {
    const QRectF area(screen);
    return QPointF(area.left() + (area.width() - kWidth) / 2,
                   area.bottom() - area.height() * 0.75 - height)
        .toPoint();
}

}  // namespace

void ToastWindow::show(const QString &message, const QString &actionTitle,
                       const std::function<void()> &action) {
    const Services *const all = services();
    if (!all)
        return;
    all->mainQueue.async([message, actionTitle, action] {
        if (!services())
            return;
        static QPointer<ToastWindow> current;
        if (current)
            current->closePanel();
        current = new ToastWindow(message, actionTitle, action);
        current->present();
    });
}

ToastWindow::ToastWindow(const QString &message, const QString &actionTitle,
                         const std::function<void()> &action)
    : ToastPanel(kCornerRadius,
                 hasButton(actionTitle, action) ? Input::IsAccepted : Input::PassesThrough) {
    QPushButton *button =
        hasButton(actionTitle, action) ? makeButton(actionTitle, action, this) : nullptr;
    const int textWidth = button ? kWidth - button->width() - kMarginsAroundButton : kTextWidth;
    const int limit = actionTitle.isEmpty() ? kTextWidth : kTextWidthBesideButton;
    const QFont font = systemFont(kFontSize);
    // Beside a wide button a text can need two lines that would have fitted the limit.
    const int textHeight =
        std::min(wrappedTextHeight(message, font, std::min(limit, textWidth)), kMaximumTextHeight);
    const int height = std::max(textHeight + kVerticalPadding, kMinimumHeight);
    setPanelSize({kWidth, height});

    auto *label = new TextLabel(inTwoLines(message, font, textWidth), font, colors::label, this);
    label->setGeometry(kTextLeft, (height - textHeight) / 2, textWidth, textHeight);
    if (button) {
        button->move(kWidth - button->width() - kButtonMargin, (height - button->height()) / 2);
        // Screen readers go by this order.
        label->stackUnder(button);
    }
    // Screen readers say all of one at once.
    installAccessible<ToastWindow, AccessibleWithRole<QAccessible::AlertMessage>>();
    setAccessibleName(message);
}

void ToastWindow::present() {
    QScreen *screen = activeScreen(services()->nativeWindow);
    showOnTop(screen, screen ? topLeft(screen->geometry(), height()) : pos());
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    fadeOutAfter(kStay, kFadeOut);
}

}  // namespace kestrelbay
