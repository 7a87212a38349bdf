#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <QString>

#include "hotkeys/HotkeyMatcher.h"
#include "model/RuleFile.h"
#include "model/RuleImport.h"
#include "model/ShortcutRule.h"
#include "platform/EventTap.h"

namespace kestrelbay {

class SystemLog;

/// The one owner of the rule list: its order is the display order and the order
/// of matching. Keeps it in a file and dispatches key presses to it. Main thread
/// only.
class ShortcutManager {
public:
    using Rules = std::vector<ShortcutRule>;
    using RecordingCallback = std::function<EventVerdict(EventType, KeyCode, ModifierFlags)>;

    struct Hooks {
        /// An enabled rule's hotkey was pressed. Has to return at once: the key, and
        /// with it the user's keyboard, waits for it. May be empty.
        std::function<void(const ShortcutRule &)> ruleFired{};
        /// The list is now another one, as after loading it. May be empty.
        std::function<void(const Rules &)> rulesChanged{};
        /// The list is now the one of a file that somebody else has changed; rulesChanged came
        /// first. May be called within any change below. May be empty.
        std::function<void()> rulesTakenIn{};
        /// No callback records any more. May be empty.
        std::function<void()> recordingEnded{};
        /// refusal(), needsSides() or triggerText() may answer otherwise now. May be empty.
        std::function<void()> refusalsChanged{};
        /// The installed tap was taken away (EventTap::Handlers::lost). May be empty.
        std::function<void()> tapLost{};
        /// areKeysWithheld() answers otherwise now, with the tap still installed. May be empty.
        std::function<void()> withheldChanged{};
    };

    /// Loads the rules and tries to install the tap. The folder is created when it
    /// is missing; no path at all is fatal. Needs no application object: made before it, it has
    /// the hotkeys in place first, and their presses wait for the event loop.
    ShortcutManager(const QString &storageDirectory, EventTap &tap, SystemLog &log, Hooks hooks);
    ~ShortcutManager();
    ShortcutManager(const ShortcutManager &) = delete;
    ShortcutManager &operator=(const ShortcutManager &) = delete;

    /// In the place of those before. What has happened already is not told.
    void setHooks(Hooks hooks) { hooks_ = std::move(hooks); }

    /// The program's own manager, set by its entry point; unset again when it
    /// is destroyed.
    [[nodiscard]] static ShortcutManager &shared();
    static void setShared(ShortcutManager &manager);

    /// The folder that holds the rules, as it was given.
    [[nodiscard]] const QString &storageDirectory() const { return storageDirectory_; }

    [[nodiscard]] const Rules &rules() const { return rules_; }
    void loadRules();

    enum class RuleFileNews : std::uint8_t {
        None,
        TakenIn,
        Unusable,  ///< also when it is gone; the list stays, and so does the file
    };
    /// Looks whether somebody else has changed the file, and takes over what it says.
    RuleFileNews takeInRuleFile();
    /// Logs, once, why the file was Unusable, if it still is.
    void tellRuleFileProblem();

    /// Every change below first takes in what others have done to the file, and changes the
    /// list that comes of it; a file that is Unusable then is kept beside the new one. It is in
    /// force before it is saved, as that waits for the disk; a failure keeps the list in
    /// memory and the old file on disk, without a word.
    /// False for a failure.
    bool saveRules();
    void addRule(const ShortcutRule &rule);
    /// Puts it at this place, or at the end of a shorter list. Nothing happens when a rule has its
    /// id.
    void insertRule(const ShortcutRule &rule, std::size_t place);
    /// Adds what planImport() makes of the rules, and tells it. None when it could not be saved;
    /// then nothing is added.
    std::optional<RuleImport> importRules(const Rules &rules);
    /// Replaces the first rule that has the same id; nothing happens if none has.
    void updateRule(const ShortcutRule &rule);
    /// The rule that was removed, if one was.
    std::optional<ShortcutRule> removeRule(std::ptrdiff_t index);
    /// `destination` is the final index of the moved rule. Indices outside the list
    /// change nothing, nor do those of a list that the file has just replaced.
    void moveRule(std::ptrdiff_t source, std::ptrdiff_t destination);

    /// Does what the hotkey of the first rule with this id would do, also where no hotkey can
    /// be seen: nothing for a disabled rule, nor while the global switch is off. False when
    /// there is no such rule.
    [[nodiscard]] bool runRule(const QUuid &id) const;

    /// The global switch for dispatch. Not kept: every start begins enabled.
    [[nodiscard]] bool isEnabled() const { return isEnabled_; }
    void setEnabled(bool enabled);

    /// The installed tap; null while there is none.
    [[nodiscard]] EventTap *eventTap() const { return installedTap_; }
    [[nodiscard]] bool isAccessibilityGranted() const { return installedTap_ != nullptr; }
    /// Why there is no installed tap (EventTap::problem).
    [[nodiscard]] TapProblem tapProblem() const { return tap_.problem(); }
    /// Hotkeys rest, as the system withholds all keys (EventTap::areKeysWithheld).
    [[nodiscard]] bool areKeysWithheld() const {
        return installedTap_ && installedTap_->areKeysWithheld();
    }
    void setupEventTap();
    void teardownEventTap();
    /// Teardown, then setup; how a permission that was just granted takes effect.
    void reinstallEventTap();

    [[nodiscard]] const std::set<KeyCode> &heldModifierCodes() const { return heldModifierCodes_; }

    /// While set it gets every event, and nothing is dispatched.
    [[nodiscard]] const RecordingCallback &recordingCallback() const { return recordingCallback_; }
    /// False when the tap can't deliver all keys just now (EventTap::setRecording).
    /// `lost` tells that recording has ended without the caller: the tap is gone, after
    /// a reinstallation no longer delivers all keys, or another callback takes over.
    /// Both are unset by then.
    bool setRecordingCallback(RecordingCallback callback, std::function<void()> lost = {});

    /// How another program holds the rule's hotkey, so that it can't fire; none where
    /// nobody does.
    [[nodiscard]] std::optional<RefusedHotkey> refusal(const ShortcutRule &rule) const;

    /// What the user presses for the rule's hotkey, in the system's own words
    /// (EventTap::triggerText).
    [[nodiscard]] QString triggerText(const ShortcutRule &rule) const;

    /// Does the rule's hotkey name a side which the installed tap cannot tell from the other? Then
    /// it does not fire.
    [[nodiscard]] bool needsSides(const ShortcutRule &rule) const;

    /// Does the installed tap tell left modifier keys from right ones? True where there is none.
    [[nodiscard]] bool canTellSides() const;

    /// Does recording get keys that other programs and the desktop have? True where there is no
    /// tap.
    [[nodiscard]] bool canRecordAllKeys() const;

    /// What the tap calls for each event.
    EventVerdict eventTapCallback(EventType type, KeyCode keyCode, ModifierFlags flags);
    /// What a tap that is told of hotkeys calls for each press of one. Nothing fires while a
    /// callback records.
    void hotkeyPressed(const Hotkey &hotkey) const;

private:
    /// False when no rule has the hotkey, or the switch is off.
    bool fireFirstMatch(KeyCode keyCode, ModifierFlags flags) const;
    void fire(const ShortcutRule &rule) const;
    void rulesWereChanged();
    RuleFileNews followRuleFile();
    void publishWantedHotkeys();
    void removeTap();
    void noteLostTap();
    void installTap();
    void logTapProblem();
    void logRestingHotkeys();
    void noteRefusals();
    void tellRefusals();
    void endRecordingWithoutTap();
    /// The application of the first rule that has the hotkey.
    [[nodiscard]] QString purposeOf(const Hotkey &hotkey) const;
    void logForRulesOf(const Hotkey &hotkey, const QString &prefix, const QString &suffix) const;

    EventTap &tap_;
    SystemLog &log_;
    Hooks hooks_;
    QString storageDirectory_;
    RuleFile file_;
    /// Not logged yet; empty when there is none.
    QString ruleFileProblem_;
    Rules rules_;
    HotkeyMatcher matcher_;
    std::vector<Hotkey> wantedHotkeys_;  // sorted
    /// Those that rest as they name a side which the tap cannot tell; sorted.
    std::vector<Hotkey> restingHotkeys_;
    std::vector<Hotkey> loggedRestingHotkeys_;
    /// Those the wanted hotkeys were chosen for.
    TapAbilities abilities_;
    std::vector<RefusedHotkey> refusedHotkeys_;  // sorted; as the tap last said
    std::vector<RefusedHotkey> toldRefusals_;    // sorted; as known to the hook
    bool toldSides_ = true;                      // canTellSides() as known to the hook
    EventTap *installedTap_ = nullptr;
    /// The log has said so since the last installation.
    TapProblem loggedProblem_ = TapProblem::None;
    /// The last try found another instance.
    bool isOtherInstanceThere_ = false;
    bool isEnabled_ = true;
    std::set<KeyCode> heldModifierCodes_;
    RecordingCallback recordingCallback_;
    std::function<void()> recordingLost_;
    bool isTapRecording_ = false;
};

}  // namespace kestrelbay
