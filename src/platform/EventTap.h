#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QString>

#include "keys/Hotkey.h"

namespace kestrelbay {

/// What a tap reports. The numbers are CGEventType's.
enum class EventType : std::uint32_t {
    KeyDown = 10,
    FlagsChanged = 12,
    TapDisabledByTimeout = 0xFFFFFFFE,
    TapDisabledByUserInput = 0xFFFFFFFF,
};

enum class EventVerdict {
    Pass,     ///< the key goes on to the application in front
    Swallow,  ///< nobody else sees the key
};

/// Why a tap is not installed.
enum class TapProblem : std::uint8_t {
    None,              ///< it is, or it was never tried
    NotPermitted,      ///< the user has not let this program see keys
    WaylandSession,    ///< the session gives programs no hotkeys
    NoDisplay,         ///< there is no X server or compositor to be asked
    NoInputExtension,  ///< the X server lacks XInput 2.1 or XKB
    ExtensionMissing,  ///< the desktop gives hotkeys to its extensions, and ours is not enabled
    OtherInstance,     ///< another instance has the keys
};

/// What a tap can tell apart and do.
struct TapAbilities {
    bool tellsSides = true;      ///< left and right modifier keys
    bool passesKeysBack = true;  ///< a key can go on to the program in front after it was looked at

    auto operator<=>(const TapAbilities &) const = default;
};

/// A wanted hotkey whose KeyDown does not arrive.
struct RefusedHotkey {
    Hotkey hotkey;
    /// The modifier key that another program has, so that it gets every key pressed
    /// together with it. None where it has just this hotkey.
    std::optional<KeyCode> modifierKey{};
    /// Nobody has it: the desktop has the user choose keys for it, and there are none yet.
    bool isUnassigned = false;

    auto operator<=>(const RefusedHotkey &) const = default;
};

/// Sees the key presses and modifier changes of the user's session and decides
/// which of them other programs get. Every call is made, and every handler is
/// called, on the main thread.
class EventTap {
public:
    struct Handlers {
        /// One event; the repeats of a key that is held are none, and get the verdict on its
        /// press. For FlagsChanged the key code is one modifier key, and the
        /// event means that this key changed between up and down; a verdict on it
        /// is ignored where the system cannot hold modifier keys back. A modifier that
        /// counts for a key though none is held is told of as its left key, which then
        /// goes up again.
        std::function<EventVerdict(EventType, KeyCode, ModifierFlags)> event{};
        /// A wanted hotkey was pressed, from a tap that is told of hotkeys and not of keys. Once
        /// a press, however long it is held.
        std::function<void(const Hotkey &)> hotkeyPressed{};
        /// What a wanted hotkey is for, where the system shows it to the user.
        std::function<QString(const Hotkey &)> purposeOf{};
        /// The answer of refusedHotkeys() is now another one.
        std::function<void()> refusalsChanged{};
        /// The answer of triggerText() is now another one.
        std::function<void()> triggersChanged{};
        /// The tap was taken from this program and has removed itself; problem() says
        /// why, and install() may succeed later.
        std::function<void()> lost{};
        /// The answer of areKeysWithheld() is now another one. May come a second late.
        std::function<void()> withheldChanged{};
    };

    virtual ~EventTap() = default;

    /// Starts delivering, disabled hotkeys included. False when the system does
    /// not let this program see keys, which is what "no permission" means; then
    /// nothing was changed and a later call may succeed. Not called while
    /// installed. The event loop, which delivers, need not be there yet.
    [[nodiscard]] virtual bool install(Handlers handlers) = 0;

    /// What the last call of install() failed for, or what the tap was lost to since.
    [[nodiscard]] virtual TapProblem problem() const = 0;

    /// May be others after install(), and at no other time.
    [[nodiscard]] virtual TapAbilities abilities() const = 0;

    /// Resumes delivery after one of the TapDisabled events, which end recording too. Where
    /// that shows that the tap has been taken away, `lost` is called within.
    virtual void enable() = 0;

    /// Stops delivering and gives every key back. Harmless when not installed.
    virtual void remove() = 0;

    /// The only keys for which KeyDown has to be delivered. Kept across remove()
    /// and install(). Hotkeys wanted before and after are never let go in between. None names
    /// a side where the tap does not tell sides; if only install() shows that, those wanted until
    /// then may, and are set anew right after it.
    virtual void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) = 0;

    /// While on, KeyDown is delivered for every key, hotkeys that belong to other
    /// programs included if recordsAllKeys(). Delivery ends by itself with remove().
    /// False when another program holds the keyboard just now; wanted hotkeys then still arrive.
    virtual bool setRecording(bool recording) = 0;

    /// While recording: do keys arrive that other programs or the desktop have taken? Where the
    /// desktop asks the user first, the answer may become another one meanwhile.
    [[nodiscard]] virtual bool recordsAllKeys() const { return true; }

    /// Delivers at once what waits for the event loop, where the user's keyboard waits
    /// with it. To be called before the main thread is kept busy by a disk. Nothing
    /// happens inside a handler, or when not installed.
    virtual void deliverWaiting() = 0;

    /// The wanted hotkeys that another program holds, each once. Some show only when
    /// they are pressed. Those that the system has refused are asked for again from time
    /// to time, and one that arrives after all is none any more; the handler tells.
    [[nodiscard]] virtual std::vector<RefusedHotkey> refusedHotkeys() const = 0;

    /// What the user presses for a wanted hotkey, in the system's own words, where the system has
    /// the user choose that. Empty where it is the hotkey itself, or not known yet.
    [[nodiscard]] virtual QString triggerText(const Hotkey & /*hotkey*/) const { return {}; }

    /// The part of the desktop that keys come through, by its own name; empty where it is the
    /// display that programs are shown on.
    [[nodiscard]] virtual QString sourceName() const { return {}; }

    /// Does the system keep all keys from programs like this one just now, though the tap is
    /// installed, as while the user types a password? False where it never does.
    [[nodiscard]] virtual bool areKeysWithheld() const = 0;
};

}  // namespace kestrelbay
