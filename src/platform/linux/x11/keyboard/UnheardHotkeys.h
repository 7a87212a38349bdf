#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include <QString>

#include "platform/EventTap.h"
#include "platform/linux/x11/keymap/KeyGrabs.h"

namespace kestrelbay::x11 {

/// Finds out which hotkeys are pressed and yet never arrive, although the server has
/// granted them.
///
/// Another client that has grabbed the modifier key itself holds the keyboard from its
/// press on, and no other grab is looked at until it is up again. And a hotkey may be
/// grabbed twice, by the core protocol and by XInput 2, of which only one gets it. A
/// press that does not arrive is no proof: while a menu is open, whoever opened it holds
/// the keyboard. So the server is then asked for such a grab, in vain where there is one.
class UnheardHotkeys {
public:
    explicit UnheardHotkeys(QString displayName) : displayName_(std::move(displayName)) {}

    void setWanted(const std::vector<Hotkey> &wanted);

    // Each of these is true when refused() is now another one.

    /// A key goes down or up, as raw events tell, while these modifier keys are down.
    /// Only whether the press is that of a wanted hotkey is looked at.
    [[nodiscard]] bool noteRawKey(XKeycode keycode, bool pressed, const std::set<KeyCode> &held,
                                  const KeyboardModel &keyboard);
    /// The press of a wanted key has arrived.
    [[nodiscard]] bool noteKeyPress(XKeycode keycode);
    /// For when other programs may hold other keys than before.
    [[nodiscard]] bool forget();

    [[nodiscard]] const std::vector<RefusedHotkey> &refused() const { return refused_; }

private:
    struct Press {
        std::vector<Hotkey> hotkeys;
        /// The modifier key that went down while no other was.
        std::optional<KeyCode> firstModifier;
    };

    [[nodiscard]] bool addRefused(const Press &press, const KeyboardModel &keyboard);

    const QString displayName_;
    std::vector<Hotkey> wanted_;
    std::vector<RefusedHotkey> refused_;
    /// Presses of wanted hotkeys that have not arrived, as long as the key is down.
    std::map<XKeycode, Press> pressed_;
    std::optional<KeyCode> firstModifier_;
};

}  // namespace kestrelbay::x11
