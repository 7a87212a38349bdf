#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QString>

#include "fakes/Journal.h"
#include "platform/EventTap.h"

namespace kestrelbay {

/// A keyboard on which a test presses keys. Delivers what the interface promises
/// and no more: key-downs of the wanted hotkeys that no other program holds, or of
/// all keys while recording.
class FakeEventTap final : public EventTap {
public:
    [[nodiscard]] bool install(Handlers handlers) override {
        journal_.add(QStringLiteral("install"));
        problem_ = permission_ ? TapProblem::None : refusal_;
        if (!permission_)
            return false;
        handlers_ = std::move(handlers);
        isInstalled_ = true;
        isDelivering_ = true;
        abilities_ = abilitiesOnceInstalled_;
        return true;
    }
    [[nodiscard]] TapProblem problem() const override { return problem_; }
    [[nodiscard]] TapAbilities abilities() const override { return abilities_; }
    [[nodiscard]] bool recordsAllKeys() const override { return recordsAllKeys_; }
    [[nodiscard]] QString sourceName() const override { return sourceName_; }
    void enable() override {
        journal_.add(QStringLiteral("enable"));
        if (isInstalled_ && !permission_)
            lose(refusal_);
        isDelivering_ = isInstalled_;
    }
    void remove() override {
        journal_.add(QStringLiteral("remove"));
        clear();
    }
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override {
        const std::vector<RefusedHotkey> before = refusedHotkeys();
        wanted_ = hotkeys;
        ++wantedHotkeysCalls_;
        tellRefusals(before);
    }
    bool setRecording(bool recording) override {
        journal_.add(recording ? QStringLiteral("setRecording true")
                               : QStringLiteral("setRecording false"));
        isRecording_ = recording && isInstalled_ && !keyboardIsHeld_;
        if (const auto key = std::exchange(pressedAtRecording_, {}); key && isRecording_)
            press(*key);
        return isRecording_ == recording;
    }
    void deliverWaiting() override {
        for (const KeyCode key : std::exchange(waiting_, {}))
            press(key);
    }
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override {
        std::vector<RefusedHotkey> refused;
        for (const Hotkey &hotkey : wanted_) {
            if (isInstalled_ && heldByOthers_.contains(hotkey))
                refused.push_back({hotkey, heldModifier_});
            else if (isInstalled_ && unassigned_.contains(hotkey))
                refused.push_back({.hotkey = hotkey, .isUnassigned = true});
        }
        return refused;
    }
    [[nodiscard]] bool areKeysWithheld() const override { return areKeysWithheld_; }
    [[nodiscard]] QString triggerText(const Hotkey &hotkey) const override {
        const auto found = triggerTexts_.find(hotkey);
        return isInstalled_ && found != triggerTexts_.end() ? found->second : QString();
    }

    // For the test:
    void setPermission(bool granted) { permission_ = granted; }
    /// What it then says is missing.
    void setRefusal(TapProblem problem) { refusal_ = problem; }
    void setSourceName(const QString &name) { sourceName_ = name; }
    /// The next installation shows that it has these.
    void setRecordsAllKeys(bool all) { recordsAllKeys_ = all; }
    void setAbilities(TapAbilities abilities) { abilitiesOnceInstalled_ = abilities; }
    [[nodiscard]] bool isInstalled() const { return isInstalled_; }
    [[nodiscard]] bool isDelivering() const { return isDelivering_; }
    [[nodiscard]] bool isRecording() const { return isRecording_; }
    [[nodiscard]] const std::vector<Hotkey> &wantedHotkeys() const { return wanted_; }
    [[nodiscard]] int wantedHotkeysCalls() const { return wantedHotkeysCalls_; }
    /// install, enable, remove and setRecording calls since the last take.
    QStringList takeCalls() { return journal_.take(); }

    /// A key that is pressed just when recording is asked for the next time.
    void pressAtRecording(KeyCode keyCode) { pressedAtRecording_ = keyCode; }
    /// Another program holds the keyboard, so that recording can't begin.
    void setKeyboardHeldByOthers(bool held) { keyboardIsHeld_ = held; }
    /// Other programs hold these hotkeys, and no others, from now on.
    /// They do so by holding the modifier key, where one is given.
    void setHeldByOthers(const std::set<Hotkey> &hotkeys,
                         std::optional<KeyCode> modifierKey = std::nullopt) {
        const std::vector<RefusedHotkey> before = refusedHotkeys();
        heldByOthers_ = hotkeys;
        heldModifier_ = modifierKey;
        tellRefusals(before);
    }
    /// The desktop has keys for all hotkeys but these from now on.
    void setUnassigned(const std::set<Hotkey> &hotkeys) {
        const std::vector<RefusedHotkey> before = refusedHotkeys();
        unassigned_ = hotkeys;
        tellRefusals(before);
    }

    /// The system has other words for this hotkey from now on.
    void setTriggerText(const Hotkey &hotkey, const QString &text) {
        triggerTexts_.insert_or_assign(hotkey, text);
        if (handlers_.triggersChanged)
            handlers_.triggersChanged();
    }
    /// What the system would show of it.
    [[nodiscard]] QString purposeOf(const Hotkey &hotkey) const {
        return handlers_.purposeOf(hotkey);
    }

    /// Presses a key, or lets a modifier key go that is down. No verdict when the
    /// tap did not get to see the key.
    std::optional<EventVerdict> press(KeyCode keyCode) {
        if (isModifierKeyCode(keyCode)) {
            if (down_.erase(keyCode) == 0)
                down_.insert(keyCode);
            return deliver(EventType::FlagsChanged, keyCode);
        }
        swallowed_.erase(keyCode);
        if (!isRecording_ && !isWanted(keyCode))
            return std::nullopt;
        const std::optional<EventVerdict> verdict = deliver(EventType::KeyDown, keyCode);
        if (verdict == EventVerdict::Swallow)
            swallowed_.insert(keyCode);
        return verdict;
    }
    /// What becomes of a repeat of the key, which is held since it was pressed last.
    EventVerdict repeat(KeyCode keyCode) const {
        return swallowed_.contains(keyCode) ? EventVerdict::Swallow : EventVerdict::Pass;
    }
    /// Presses a hotkey of which the tap is told as such, if it is wanted. True when it was told.
    bool pressHotkey(const Hotkey &hotkey) const {
        if (!isDelivering_ || !std::ranges::binary_search(wanted_, hotkey) ||
            heldByOthers_.contains(hotkey))
            return false;
        const auto handler = handlers_.hotkeyPressed;  // the handler may remove the tap
        handler(hotkey);
        return true;
    }
    std::optional<EventVerdict> release(KeyCode modifierKey) {
        return down_.contains(modifierKey) ? press(modifierKey) : std::nullopt;
    }
    /// Pressed, and waiting to be delivered.
    void pressUnread(KeyCode keyCode) { waiting_.push_back(keyCode); }
    /// Another instance takes the tap, and keeps it until the permission is given again.
    void takeAway() {
        permission_ = false;
        refusal_ = TapProblem::OtherInstance;
        lose(refusal_);
    }
    /// The system begins to keep all keys to itself, or ends it.
    void setKeysWithheld(bool withheld) {
        areKeysWithheld_ = withheld;
        if (handlers_.withheldChanged)
            handlers_.withheldChanged();
    }
    /// The system stops the tap, which only enable() repairs.
    void disable(EventType reason) {
        isDelivering_ = isRecording_ = false;
        if (handlers_.event)
            handlers_.event(reason, KeyCode{}, ModifierFlags());
    }

private:
    static constexpr ModifierFlags kGeneric = modifier::kGenericMask;

    [[nodiscard]] bool isWanted(KeyCode keyCode) const {
        const ModifierFlags flags = buildDetailedFlags(down_);
        return std::ranges::any_of(wanted_, [&](const Hotkey &hotkey) {
            return hotkey.keyCode == keyCode &&
                   (hotkey.modifierFlags & kGeneric) == (flags & kGeneric) &&
                   !heldByOthers_.contains(hotkey);
        });
    }
    std::optional<EventVerdict> deliver(EventType type, KeyCode keyCode) {
        if (!isDelivering_ || areKeysWithheld_ || !handlers_.event)
            return std::nullopt;
        const auto handler = handlers_.event;  // the handler may remove the tap
        return handler(type, keyCode, buildDetailedFlags(down_));
    }
    void clear() {
        isInstalled_ = isDelivering_ = isRecording_ = areKeysWithheld_ = false;
        handlers_ = {};
        swallowed_.clear();
    }
    void lose(TapProblem problem) {
        const auto lost = handlers_.lost;
        clear();
        problem_ = problem;
        if (lost)
            lost();
    }
    void tellRefusals(const std::vector<RefusedHotkey> &before) const {
        if (before != refusedHotkeys() && handlers_.refusalsChanged)
            handlers_.refusalsChanged();
    }

    Handlers handlers_;
    Journal journal_;
    std::vector<Hotkey> wanted_;
    std::set<Hotkey> heldByOthers_;
    std::optional<KeyCode> heldModifier_;
    std::set<Hotkey> unassigned_;
    std::map<Hotkey, QString> triggerTexts_;
    std::set<KeyCode> down_;
    std::set<KeyCode> swallowed_;
    std::vector<KeyCode> waiting_;
    std::optional<KeyCode> pressedAtRecording_;
    int wantedHotkeysCalls_ = 0;
    QString sourceName_;
    TapAbilities abilities_;
    TapAbilities abilitiesOnceInstalled_;
    TapProblem problem_ = TapProblem::None;
    TapProblem refusal_ = TapProblem::NotPermitted;
    bool permission_ = true;
    bool keyboardIsHeld_ = false;
    bool recordsAllKeys_ = true;
    bool isInstalled_ = false;
    bool isDelivering_ = false;
    bool isRecording_ = false;
    bool areKeysWithheld_ = false;
};

}  // namespace kestrelbay
