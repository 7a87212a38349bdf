#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>

#include <QString>

#include "keys/KeyCode.h"
#include "keys/ModifierFlags.h"
#include "platform/EventTap.h"
#include "platform/ScreenLock.h"
#include "tasks/Timers.h"

namespace kestrelbay {

class ShortcutManager;

/// Records one hotkey from the keys that the manager's tap sees: the first key
/// pressed together with a modifier. Knows nothing of widgets. Main thread.
///
/// While it records, no other program and no rule gets a key, so whoever starts it
/// has to stop it as soon as the user turns to something else. It stops by itself
/// at a hotkey, at Escape, at Delete without modifiers, when the tap goes, when it is
/// destroyed, and, since nothing else could lock the screen meanwhile, before that is
/// locked and when no key has been pressed for long.
class HotkeyRecorder {
public:
    /// Each may be empty, and may destroy the recorder.
    struct Hooks {
        /// Recording begins.
        std::function<void()> started{};
        /// heldModifiers() has changed.
        std::function<void()> modifiersChanged{};
        /// A hotkey was pressed, and is now the recorder's. Comes before `ended`.
        std::function<void(KeyCode, ModifierFlags)> recorded{};
        /// The hotkey was taken away with the Delete key. Comes before `ended`.
        std::function<void()> cleared{};
        /// A key without a modifier; recording goes on.
        std::function<void()> keyWithoutModifier{};
        /// Recording is over, for whatever reason.
        std::function<void()> ended{};
        /// No recording, because the program is not let see keys.
        std::function<void()> tapMissing{};
        /// No recording, because another program has held the keyboard all the time.
        std::function<void()> keyboardHeld{};
    };

    /// Another program seldom holds the keyboard for longer than its menu takes to
    /// close, so recording is tried this often before it is given up.
    static constexpr std::chrono::milliseconds kKeyboardRetryInterval{100};
    static constexpr int kKeyboardRetries = 10;

    /// Recording ends after this time without a key. Desktops lock a session that was
    /// left alone after a minute at the earliest.
    static constexpr std::chrono::seconds kLongestWithoutKey{30};

    HotkeyRecorder(ShortcutManager &manager, Timers &timers, ScreenLock &screenLock, Hooks hooks);
    ~HotkeyRecorder();

    [[nodiscard]] KeyCode keyCode() const { return keyCode_; }
    [[nodiscard]] ModifierFlags modifierFlags() const { return modifierFlags_; }
    void setHotkey(KeyCode keyCode, ModifierFlags modifierFlags);
    /// As the user reads it; empty when there is none. Key code 0 shows no key.
    [[nodiscard]] QString hotkeyString() const;

    [[nodiscard]] bool isRecording() const { return state_ == State::Recording; }
    /// Is the keyboard waited for? Nothing is recorded meanwhile.
    [[nodiscard]] bool isWaitingForKeyboard() const { return state_ == State::Waiting; }

    /// Nothing happens while it records or waits already. Tells by the hooks what
    /// has become of it, perhaps later.
    void start();
    /// Harmless while it does not record. Keeps the hotkey.
    void stop();

    /// The modifiers pressed since the start, without their sides where these cannot be told. One
    /// that was down then counts the wrong way round: only changes are told.
    [[nodiscard]] ModifierFlags heldModifiers() const;

private:
    enum class State : std::uint8_t { Idle, Waiting, Recording };

    void tryToRecord();
    void waitForKeyboard();
    void expectKey();
    [[nodiscard]] EventVerdict handleRawEvent(EventType type, KeyCode keyCode);
    void handleKeyDown(KeyCode keyCode);
    void finish(const std::function<void()> &outcome);
    void becomeIdle();
    /// False when the hook has destroyed the recorder.
    bool call(const std::function<void()> &hook);

    ShortcutManager &manager_;
    Timers &timers_;
    ScreenLock &screenLock_;
    Hooks hooks_;
    KeyCode keyCode_{};
    ModifierFlags modifierFlags_;
    State state_ = State::Idle;
    std::set<KeyCode> heldModifierCodes_;
    int retriesLeft_ = 0;
    std::unique_ptr<Timers::Timer> retryTimer_;
    std::unique_ptr<Timers::Timer> noKeyTimer_;
    std::unique_ptr<ScreenLock::Watch> lockWatch_;
    std::shared_ptr<bool> life_ = std::make_shared<bool>();
};

}  // namespace kestrelbay
