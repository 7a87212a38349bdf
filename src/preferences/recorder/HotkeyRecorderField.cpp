#include "preferences/recorder/HotkeyRecorderField.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

#include <chrono>
#include <utility>

#include "hotkeys/ShortcutManager.h"
#include "preferences/RuleRowTexts.h"
#include "settings/L.h"
#include "settings/Notifications.h"
#include "tasks/DispatchQueue.h"
#include "ui/look/Drawing.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr qreal kFieldRadius = 6;
constexpr int kLabelFontSize = 12;
constexpr int kLabelX = 4;
constexpr int kLabelHeight = 18;
constexpr int kBesideLabel = 30;
constexpr int kClearFontSize = 10;
constexpr QSize kClearSize{22, 18};
constexpr int kClearFromRight = 24;
constexpr float kRecordingAlpha = 0.08F;
constexpr std::chrono::milliseconds kRedBorderDuration{500};

QColor fieldTextColor() {
    return colors::isDark() ? QColor::fromRgbF(0.95F, 0.95F, 0.95F)
                            : QColor::fromRgbF(0.1F, 0.1F, 0.1F);
}

QColor fieldPlaceholderColor() {
    if (colors::isContrastHigh())
        return colors::tertiaryLabel();
    return colors::isDark() ? QColor::fromRgbF(0.5F, 0.5F, 0.5F)
                            : QColor::fromRgbF(0.6F, 0.6F, 0.6F);
}

QColor recordingBackground() {
    return withAlpha(colors::controlAccent(), kRecordingAlpha);
}

bool isDelete(const QKeyEvent &event) {
    return event.key() == Qt::Key_Delete || event.key() == Qt::Key_Backspace;
}

bool isReturn(const QKeyEvent &event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace

HotkeyRecorderField::HotkeyRecorderField(const PreferencesServices &services, QWidget *parent)
    : QAbstractButton(parent),
      services_(services),
      recorder_(services.manager, services.timers, services.screenLock, hooks()),
      shake_(*this),
      label_(new TextLabel(QString(), systemFont(kLabelFontSize), fieldPlaceholderColor, this)),
      clearButton_(new QPushButton(L::recorderClear(), this)),
      border_(colors::separator),
      background_(colors::field) {
    setFocusPolicy(Qt::TabFocus);
    label_->setAlignment(Qt::AlignCenter);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    clearButton_->setFont(systemFont(kClearFontSize));
    clearButton_->setFocusPolicy(Qt::NoFocus);
    connect(clearButton_, &QAbstractButton::clicked, this, &HotkeyRecorderField::clearHotkey);
    connect(this, &QAbstractButton::clicked, this, &HotkeyRecorderField::pressedWithoutMouse);
    connect(&services_.notifications, &Notifications::keyboardLayoutDidChange, this,
            &HotkeyRecorderField::updateNames);
    updateDisplay();
}

HotkeyRecorder::Hooks HotkeyRecorderField::hooks() {
    return {
        .started = [this] { showRecordingState(); },
        .modifiersChanged = [this] { showHeldModifiers(); },
        .recorded =
            [this](KeyCode keyCode, ModifierFlags flags) {
                if (delegate_)
                    delegate_->hotkeyRecorderDidRecord(this, keyCode, flags);
            },
        .cleared =
            [this] {
                if (delegate_)
                    delegate_->hotkeyRecorderDidClear(this);
            },
        .keyWithoutModifier = [this] { shakeAnimation(); },
        .ended = [this] { recordingEnded(); },
        .tapMissing =
            [this] {
                services_.showToast(L::recorderNoAccess(), L::recorderGrantAccess(),
                                    [&notifications = services_.notifications] {
                                        Q_EMIT notifications.openPreferencesToAccessibility();
                                    });
            },
        .keyboardHeld = [this] { services_.showToast(L::recorderKeyboardHeld(), {}, {}); },
    };
}

void HotkeyRecorderField::setSubject(const QString &name) {
    subject_ = name;
    clearButton_->setAccessibleName(L::clearHotkeyOf(name));
    updateNames();
}

void HotkeyRecorderField::configure(KeyCode keyCode, ModifierFlags modifierFlags) {
    recorder_.setHotkey(keyCode, modifierFlags);
    updateDisplay();
}

void HotkeyRecorderField::startRecordingByUser() {
    startedWithMouse_ = !window()->testAttribute(Qt::WA_KeyboardFocusChange);
    wantsToRecord_ = isEnabled();
    takeFocusAndStart();
    // The window may only be about to get the keyboard, or lose it to a closing sheet.
    services_.mainQueue.async([field = QPointer(this)] {
        if (field)
            field->takeFocusAndStart();
    });
}

void HotkeyRecorderField::stopRecording() {
    wantsToRecord_ = false;
    recorder_.stop();
}

void HotkeyRecorderField::pressedWithoutMouse() {
    if (isRecording()) {
        stopRecording();
        return;
    }
    startedWithMouse_ = false;
    wantsToRecord_ = true;
    takeFocusAndStart();
}

void HotkeyRecorderField::takeFocusAndStart() {
    if (!wantsToRecord_)
        return;
    if (!hasFocus())
        setFocus(Qt::OtherFocusReason);
    startIfFocused();
}

void HotkeyRecorderField::startIfFocused() {
    // Without the keyboard, focusInEvent() comes later.
    if (hasFocus() && std::exchange(wantsToRecord_, false))
        recorder_.start();
}

void HotkeyRecorderField::clearHotkey() {
    wasPressed_ = false;
    recorder_.setHotkey({}, {});
    const QPointer alive(this);
    if (delegate_)
        delegate_->hotkeyRecorderDidClear(this);
    if (alive)
        updateDisplay();
}

void HotkeyRecorderField::showRecordingState() {
    border_ = colors::controlAccent;
    background_ = recordingBackground;
    label_->setColor(colors::secondaryLabel);
    showHeldModifiers();
    update();
    announce();
}

void HotkeyRecorderField::showHeldModifiers() {
    const QString held = modifierDisplayString(recorder_.heldModifiers());
    label_->setText(held.isEmpty() ? L::recorderPrompt() : held + QStringLiteral("..."));
    updateNames();
}

void HotkeyRecorderField::recordingEnded() {
    updateDisplay();
    updateAppearance();
    announce();
    if (startedWithMouse_)
        clearFocus();
}

void HotkeyRecorderField::refreshDisplayColors() {
    if (!isRecording())
        updateDisplay();
}

void HotkeyRecorderField::updateDisplay() {
    const QString hotkey = recorder_.hotkeyString();
    clearButton_->setVisible(!hotkey.isEmpty());
    if (isRecording())
        return;
    label_->setText(hotkey.isEmpty() ? L::recorderEmpty() : hotkey);
    label_->setColor(hotkey.isEmpty() ? fieldPlaceholderColor : fieldTextColor);
    updateNames();
}

void HotkeyRecorderField::updateAppearance() {
    border_ = borderTimer_ ? colors::systemRed : colors::separator;
    background_ = colors::field;
    update();
}

void HotkeyRecorderField::shakeAnimation() {
    border_ = colors::systemRed;
    update();
    shake_.restart();
    borderTimer_ = services_.timers.once(kRedBorderDuration, [this] {
        borderTimer_.reset();
        updateAppearance();
    });
}

void HotkeyRecorderField::stopShaking() {
    shake_.end();
    borderTimer_.reset();
    if (!isRecording())
        updateAppearance();
}

void HotkeyRecorderField::updateNames() {
    QString state;
    QString toolTip;
    if (isRecording()) {
        const QString held = modifiersInWords(recorder_.heldModifiers());
        state = L::recorderRecording() + L::keySeparator() +
                (held.isEmpty() ? L::recorderPrompt() : held);
        if (!services_.manager.canRecordAllKeys()) {
            toolTip = L::recorderMissesKeys();
            state += L::keySeparator() + toolTip;
        }
    } else {
        state = hotkeyInWords(currentKeyCode(), currentModifierFlags(), services_.keyboardLayout);
        toolTip = recorder_.hotkeyString().isEmpty() ? QString() : state;
    }
    setToolTip(toolTip);
    // What the label shows are signs that nobody can speak.
    label_->setAccessibleName(state);
    setAccessibleName(L::hotkeyOf(subject_) + L::keySeparator() + state);
}

void HotkeyRecorderField::announce() {
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void HotkeyRecorderField::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    drawRounded(painter, QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kFieldRadius - 0.5,
                background_(), border_());
    if (!isRecording())
        drawFocusRing(painter, *this);
}

void HotkeyRecorderField::resizeEvent(QResizeEvent * /*event*/) {
    label_->setGeometry(kLabelX, (height() - kLabelHeight) / 2, width() - kBesideLabel,
                        kLabelHeight);
    clearButton_->setGeometry(
        QRect(QPoint(width() - kClearFromRight, (height() - kClearSize.height()) / 2), kClearSize));
}

void HotkeyRecorderField::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    wasPressed_ = true;
    if (isRecording()) {
        stopRecording();
        clearFocus();
    } else {
        startRecordingByUser();
    }
}

// The press has done it all, and what follows is no drag of the row.
void HotkeyRecorderField::mouseMoveEvent(QMouseEvent * /*event*/) {}
void HotkeyRecorderField::mouseReleaseEvent(QMouseEvent * /*event*/) {}

void HotkeyRecorderField::mouseDoubleClickEvent(QMouseEvent *event) {
    // Its first half has started recording, which goes on unless a key has ended it; or
    // it was for the clear button, which is gone by now.
    if (event->button() == Qt::LeftButton && wasPressed_ && !isRecording())
        startRecordingByUser();
}

void HotkeyRecorderField::keyPressEvent(QKeyEvent *event) {
    if (isRecording())
        return;
    if (isReturn(*event))
        isReturnDown_ = true;
    else if (isDelete(*event) && !recorder_.hotkeyString().isEmpty())
        clearHotkey();
    else
        QAbstractButton::keyPressEvent(event);
}

void HotkeyRecorderField::keyReleaseEvent(QKeyEvent *event) {
    // At the release, as for Space: a key that is still down would be recorded.
    if (!isReturn(*event)) {
        QAbstractButton::keyReleaseEvent(event);
    } else if (!event->isAutoRepeat() && std::exchange(isReturnDown_, false)) {
        click();
    }
}

void HotkeyRecorderField::focusInEvent(QFocusEvent *event) {
    QAbstractButton::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        wantsToRecord_ = false;
    startIfFocused();
}

void HotkeyRecorderField::focusOutEvent(QFocusEvent *event) {
    QAbstractButton::focusOutEvent(event);
    isReturnDown_ = false;
    stopRecording();
}

void HotkeyRecorderField::hideEvent(QHideEvent *event) {
    QAbstractButton::hideEvent(event);
    stopRecording();
}

void HotkeyRecorderField::changeEvent(QEvent *event) {
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        stopRecording();
}

}  // namespace kestrelbay
