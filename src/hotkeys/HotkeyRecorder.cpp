#include "hotkeys/HotkeyRecorder.h"

#include <utility>

#include "hotkeys/ShortcutManager.h"

namespace kestrelbay {

HotkeyRecorder::HotkeyRecorder(ShortcutManager &manager, Timers &timers, ScreenLock &screenLock,
                               Hooks hooks)
    : manager_(manager), timers_(timers), screenLock_(screenLock), hooks_(std::move(hooks)) {}

HotkeyRecorder::~HotkeyRecorder() {
    hooks_ = {};
    stop();
}

void HotkeyRecorder::setHotkey(KeyCode keyCode, ModifierFlags modifierFlags) {
    keyCode_ = keyCode;
    modifierFlags_ = modifierFlags;
}

QString HotkeyRecorder::hotkeyString() const {
    return ShortcutRule{.keyCode = keyCode_, .modifierFlags = modifierFlags_}.hotkeyString();
}

ModifierFlags HotkeyRecorder::heldModifiers() const {
    const ModifierFlags held = buildDetailedFlags(heldModifierCodes_);
    // One of a side would never fire.
    return manager_.canTellSides() ? held : withoutSides(held);
}

void HotkeyRecorder::start() {
    if (state_ != State::Idle)
        return;
    retriesLeft_ = kKeyboardRetries;
    tryToRecord();
}

void HotkeyRecorder::stop() {
    const bool wasRecording = state_ == State::Recording;
    becomeIdle();
    if (!wasRecording)
        return;
    manager_.setRecordingCallback(nullptr);
    call(hooks_.ended);
}

void HotkeyRecorder::tryToRecord() {
    becomeIdle();
    if (!manager_.eventTap()) {
        call(hooks_.tapMissing);
        return;
    }
    const std::weak_ptr<bool> life = life_;
    // Before the tap is told: it may deliver a modifier that goes down just then.
    state_ = State::Recording;
    const bool started = manager_.setRecordingCallback(
        [this, life](EventType type, KeyCode keyCode, ModifierFlags) {
            return life.expired() ? EventVerdict::Pass : handleRawEvent(type, keyCode);
        },
        [this, life] {
            if (life.expired())
                return;
            becomeIdle();
            call(hooks_.ended);
        });
    if (life.expired())
        return;
    if (!started) {
        becomeIdle();
        manager_.setRecordingCallback(nullptr);
        waitForKeyboard();
        return;
    }
    if (!isRecording())
        return;
    lockWatch_ = screenLock_.watch([this] { stop(); });
    expectKey();
    if (call(hooks_.started) && isRecording() && !heldModifierCodes_.empty())
        call(hooks_.modifiersChanged);
}

void HotkeyRecorder::expectKey() {
    noKeyTimer_ = timers_.once(kLongestWithoutKey, [this] { stop(); });
}

void HotkeyRecorder::waitForKeyboard() {
    if (retriesLeft_ == 0) {
        call(hooks_.keyboardHeld);
        return;
    }
    --retriesLeft_;
    state_ = State::Waiting;
    retryTimer_ = timers_.once(kKeyboardRetryInterval, [this] { tryToRecord(); });
}

EventVerdict HotkeyRecorder::handleRawEvent(EventType type, KeyCode keyCode) {
    if (state_ != State::Recording)
        return EventVerdict::Pass;
    expectKey();
    if (type != EventType::FlagsChanged) {
        handleKeyDown(keyCode);
        return EventVerdict::Swallow;
    }
    if (isModifierKeyCode(keyCode) && heldModifierCodes_.erase(keyCode) == 0)
        heldModifierCodes_.insert(keyCode);
    call(hooks_.modifiersChanged);
    // Other programs have to know which modifiers are down.
    return EventVerdict::Pass;
}

void HotkeyRecorder::handleKeyDown(KeyCode keyCode) {
    const ModifierFlags held = heldModifiers();
    const bool hasModifier = !(held & modifier::kGenericMask).isEmpty();
    if (keyCode == key::kEscape) {
        stop();
    } else if (hasModifier) {
        setHotkey(keyCode, held);
        finish([this, keyCode, held] {
            if (const auto recorded = hooks_.recorded)
                recorded(keyCode, held);
        });
    } else if (keyCode == key::kDelete) {
        setHotkey({}, {});
        finish(hooks_.cleared);
    } else {
        call(hooks_.keyWithoutModifier);
    }
}

void HotkeyRecorder::finish(const std::function<void()> &outcome) {
    // The outcome is saved, and the keyboard should not wait for the disk.
    manager_.setRecordingCallback(nullptr);
    if (call(outcome))
        stop();
}

void HotkeyRecorder::becomeIdle() {
    state_ = State::Idle;
    heldModifierCodes_.clear();
    retryTimer_.reset();
    noKeyTimer_.reset();
    lockWatch_.reset();
}

bool HotkeyRecorder::call(const std::function<void()> &hook) {
    const std::weak_ptr<bool> life = life_;
    // A copy, because the hook may destroy the original.
    if (const std::function<void()> copy = hook)
        copy();
    return !life.expired();
}

}  // namespace kestrelbay
