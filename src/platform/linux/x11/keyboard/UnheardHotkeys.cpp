#include "platform/linux/x11/keyboard/UnheardHotkeys.h"

#include <algorithm>
#include <utility>

#include "platform/linux/x11/keyboard/ForeignGrabs.h"
#include "platform/linux/x11/keyboard/HotkeyGrabs.h"

namespace kestrelbay::x11 {

namespace {

bool isPressOf(const Hotkey &hotkey, KeyCode keyCode, ModifierFlags held) {
    return hotkey.keyCode == keyCode && areModifiersOf(hotkey, held);
}

}  // namespace

void UnheardHotkeys::setWanted(const std::vector<Hotkey> &wanted) {
    wanted_ = wanted;
    std::erase_if(refused_, [this](const RefusedHotkey &refused) {
        return std::ranges::find(wanted_, refused.hotkey) == wanted_.end();
    });
}

bool UnheardHotkeys::noteRawKey(XKeycode keycode, bool pressed, const std::set<KeyCode> &held,
                                const KeyboardModel &keyboard) {
    const std::optional<KeyCode> code = toKeyCode(keycode);
    if (!code)
        return false;
    if (isModifierKeyCode(*code)) {
        if (pressed && held.empty())
            firstModifier_ = code;
        return false;
    }
    if (!pressed) {
        const auto press = pressed_.extract(keycode);
        return !press.empty() && addRefused(press.mapped(), keyboard);
    }
    Press press;
    const ModifierFlags flags = buildDetailedFlags(held);
    std::ranges::copy_if(wanted_, std::back_inserter(press.hotkeys),
                         [&](const Hotkey &hotkey) { return isPressOf(hotkey, *code, flags); });
    if (press.hotkeys.empty())
        return false;
    // One that was let go unseen is no longer the first.
    if (firstModifier_ && held.contains(*firstModifier_))
        press.firstModifier = firstModifier_;
    pressed_.insert_or_assign(keycode, std::move(press));
    return false;
}

bool UnheardHotkeys::noteKeyPress(XKeycode keycode) {
    const auto press = pressed_.extract(keycode);
    if (press.empty())
        return false;
    return std::erase_if(refused_, [&](const RefusedHotkey &refused) {
               return std::ranges::find(press.mapped().hotkeys, refused.hotkey) !=
                      press.mapped().hotkeys.end();
           }) != 0;
}

bool UnheardHotkeys::forget() {
    pressed_.clear();
    firstModifier_.reset();
    return !std::exchange(refused_, {}).empty();
}

bool UnheardHotkeys::addRefused(const Press &press, const KeyboardModel &keyboard) {
    const auto isKnown = [this](const Hotkey &hotkey) {
        return std::ranges::find(refused_, hotkey, &RefusedHotkey::hotkey) != refused_.end();
    };
    if (std::ranges::all_of(press.hotkeys, isKnown))
        return false;
    const ForeignGrabs foreign(displayName_);
    const std::optional<XKeycode> first =
        press.firstModifier ? toXKeycode(*press.firstModifier) : std::nullopt;
    const bool isModifierHeld =
        first && (foreign.hasByCore({*first, 0}) || foreign.hasByXInput({*first, 0}));
    bool changed = false;
    for (const Hotkey &hotkey : press.hotkeys) {
        const bool isHeld =
            std::ranges::any_of(grabsFor(hotkey, keyboard),
                                [&](const KeyGrab &grab) { return foreign.hasByXInput(grab); });
        if (isKnown(hotkey) || (!isHeld && !isModifierHeld))
            continue;
        refused_.push_back({hotkey, isHeld ? std::nullopt : press.firstModifier});
        changed = true;
    }
    return changed;
}

}  // namespace kestrelbay::x11
