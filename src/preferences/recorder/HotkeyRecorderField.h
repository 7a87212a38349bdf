#pragma once

#include <memory>

#include <QAbstractButton>

#include "hotkeys/HotkeyRecorder.h"
#include "preferences/PreferencesServices.h"
#include "preferences/recorder/ShakeAnimation.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {

class HotkeyRecorderField;
class TextLabel;

/// What becomes of a recorded hotkey: whether it is accepted and where it is kept.
/// Either call may reconfigure or destroy the field.
class HotkeyRecorderDelegate {
public:
    virtual ~HotkeyRecorderDelegate() = default;
    /// The field already shows the hotkey; configure() puts another one there.
    virtual void hotkeyRecorderDidRecord(HotkeyRecorderField *field, KeyCode keyCode,
                                         ModifierFlags modifierFlags) = 0;
    virtual void hotkeyRecorderDidClear(HotkeyRecorderField *field) = 0;
};

/// Shows a hotkey and records a new one. A click starts recording and a second one
/// ends it. With Tab the field only gets the focus, since recording takes all keys,
/// Tab included; Space or Return then starts it, and Delete or Backspace takes the
/// hotkey away, for which no tap is needed. Losing the focus in whatever way ends
/// recording. A recording that was started while the window was used with the mouse gives
/// the focus away at its end, so that no key pressed next starts another one. The second
/// half of a double-click does nothing.
///
/// Without a tap it never records: a toast says what is missing. While another
/// program holds the keyboard it tries again for a second as long as it keeps the
/// focus, looking idle; then a toast says so.
class HotkeyRecorderField : public QAbstractButton {
    Q_OBJECT

public:
    explicit HotkeyRecorderField(const PreferencesServices &services, QWidget *parent = nullptr);

    /// Has to outlive the field. May be null.
    void setDelegate(HotkeyRecorderDelegate *delegate) { delegate_ = delegate; }
    /// The name of the application, for those who hear the user interface.
    void setSubject(const QString &name);

    void configure(KeyCode keyCode, ModifierFlags modifierFlags);
    [[nodiscard]] KeyCode currentKeyCode() const { return recorder_.keyCode(); }
    [[nodiscard]] ModifierFlags currentModifierFlags() const { return recorder_.modifierFlags(); }
    [[nodiscard]] bool isRecording() const { return recorder_.isRecording(); }

    /// As if the user had clicked on the field while it does not record. Takes effect
    /// as soon as its window has the keyboard.
    void startRecordingByUser();
    void stopRecording();
    /// Takes the hotkey away, as the clear button does. Recording goes on.
    void clearHotkey();
    /// To the left and right for 0.35 s, with a red border for 0.5 s. Whatever border
    /// was there before, the idle one follows.
    void shakeAnimation();
    /// Ends it at once, the red border too.
    void stopShaking();
    /// For after a change of what lies behind; nothing happens while it records.
    void refreshDisplayColors();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] HotkeyRecorder::Hooks hooks();
    void pressedWithoutMouse();
    void takeFocusAndStart();
    void startIfFocused();
    void showRecordingState();
    void showHeldModifiers();
    void recordingEnded();
    void updateDisplay();
    void updateAppearance();
    void updateNames();
    void announce();

    PreferencesServices services_;
    HotkeyRecorderDelegate *delegate_ = nullptr;
    HotkeyRecorder recorder_;
    ShakeAnimation shake_;
    std::unique_ptr<Timers::Timer> borderTimer_;
    TextLabel *label_;
    QAbstractButton *clearButton_;
    QString subject_;
    colors::Function border_;
    colors::Function background_;
    bool wantsToRecord_ = false;
    bool startedWithMouse_ = false;
    bool isReturnDown_ = false;
    /// The last click was for the field itself, not for its clear button.
    bool wasPressed_ = false;
};

}  // namespace kestrelbay
