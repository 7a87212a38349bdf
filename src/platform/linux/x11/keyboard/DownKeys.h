#pragma once

#include <map>
#include <optional>
#include <span>

#include <xcb/xinput.h>

#include "platform/EventTap.h"
#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/keymap/KeyboardState.h"

namespace kestrelbay::x11 {

/// The keys that have not come up since their one KeyDown, with the verdict on it. A key that
/// was swallowed repeats for nobody until it is up, though its modifiers be let go first: it
/// is grabbed meanwhile, whatever the modifiers. Such a grab is one of XInput 2, which does
/// not meet the core grabs of the key, be they ours or another program's. Main thread.
class DownKeys {
public:
    /// The connection has to outlive it. The keyboard is the master that core events come from.
    DownKeys(const XConnection &connection, xcb_input_device_id_t keyboard)
        : connection_(connection), keyboard_(keyboard) {}

    [[nodiscard]] std::optional<EventVerdict> verdictOn(XKeycode keycode) const;

    void add(XKeycode keycode, EventVerdict verdict) { keys_[keycode] = {verdict}; }
    /// To be called before the first repeat. Takes a round trip for each key that was swallowed
    /// since the last call.
    void grabSwallowed();
    /// The key is up, or pressed anew.
    void remove(XKeycode keycode);
    /// The same for all keys that are not down, for those whose release was missed.
    void keepOnly(const KeySet &down);
    /// Those of these keys that it does not know have not been swallowed.
    void passOthers(const KeySet &down);

private:
    void grab(XKeycode keycode) const;
    [[nodiscard]] bool grab(XKeycode keycode, std::span<const std::uint32_t> modifiers) const;

    const XConnection &connection_;
    const xcb_input_device_id_t keyboard_;
    struct Key {
        EventVerdict verdict;
        bool isGrabbed = false;
    };
    std::map<XKeycode, Key> keys_;
};

}  // namespace kestrelbay::x11
