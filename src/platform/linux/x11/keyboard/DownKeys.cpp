#include "platform/linux/x11/keyboard/DownKeys.h"

#include <array>
#include <numeric>
#include <utility>

namespace kestrelbay::x11 {

namespace {

constexpr std::array<std::uint32_t, 1> kAnyModifier{XCB_INPUT_MODIFIER_MASK_ANY};

}  // namespace

std::optional<EventVerdict> DownKeys::verdictOn(XKeycode keycode) const {
    const auto found = keys_.find(keycode);
    return found == keys_.end() ? std::nullopt : std::optional(found->second.verdict);
}

void DownKeys::grabSwallowed() {
    for (auto &[keycode, key] : keys_)
        if (key.verdict == EventVerdict::Swallow && !std::exchange(key.isGrabbed, true))
            grab(keycode);
}

void DownKeys::grab(XKeycode keycode) const {
    if (grab(keycode, kAnyModifier))
        return;
    // All that the others leave; what they have is for them to swallow.
    std::array<std::uint32_t, 256> combinations{};
    std::iota(combinations.begin(), combinations.end(), 0U);
    (void)grab(keycode, combinations);
}

/// False when another client has a grab of the kind for one of the modifiers.
bool DownKeys::grab(XKeycode keycode, std::span<const std::uint32_t> modifiers) const {
    constexpr std::uint32_t kPress = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    bool granted = true;
    for (const xcb_window_t root : connection_.roots()) {
        const Reply<xcb_input_xi_passive_grab_device_reply_t> reply(
            xcb_input_xi_passive_grab_device_reply(
                connection_.get(),
                xcb_input_xi_passive_grab_device(
                    connection_.get(), XCB_CURRENT_TIME, root, XCB_NONE, keycode, keyboard_,
                    static_cast<std::uint16_t>(modifiers.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
                    XCB_INPUT_GRAB_MODE_22_SYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
                    XCB_INPUT_GRAB_OWNER_NO_OWNER, &kPress, modifiers.data()),
                nullptr));
        granted = granted && reply && reply->num_modifiers == 0;
    }
    return granted;
}

void DownKeys::remove(XKeycode keycode) {
    const auto found = keys_.find(keycode);
    if (found == keys_.end())
        return;
    if (found->second.isGrabbed) {
        for (const xcb_window_t root : connection_.roots())
            xcb_input_xi_passive_ungrab_device(connection_.get(), root, keycode,
                                               XCB_INPUT_DEVICE_ALL_MASTER, kAnyModifier.size(),
                                               XCB_INPUT_GRAB_TYPE_KEYCODE, kAnyModifier.data());
        xcb_flush(connection_.get());
    }
    keys_.erase(found);
}

void DownKeys::keepOnly(const KeySet &down) {
    for (auto next = keys_.begin(); next != keys_.end();) {
        const XKeycode keycode = (next++)->first;
        if (!down.test(keycode))
            remove(keycode);
    }
}

void DownKeys::passOthers(const KeySet &down) {
    for (std::size_t keycode = 0; keycode < down.size(); ++keycode) {
        if (down.test(keycode))
            keys_.try_emplace(static_cast<XKeycode>(keycode), Key{EventVerdict::Pass});
    }
}

}  // namespace kestrelbay::x11
