#include "platform/linux/wayland/plasma/KeyNumbers.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

#include <QtCore/qnamespace.h>
#include <QChar>

#include "platform/linux/keycodes/KeyCodeTable.h"
#include "platform/linux/wayland/plasma/QtKey.h"

namespace kestrelbay::plasma {

namespace {

constexpr std::array kModifiers{
    std::pair{modifier::kShift, Qt::ShiftModifier},
    std::pair{modifier::kControl, Qt::ControlModifier},
    std::pair{modifier::kOption, Qt::AltModifier},
    std::pair{modifier::kCommand, Qt::MetaModifier},
};

struct StateUnref {
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};

/// A key pressed with Shift or without, Num Lock on or off.
class PressedKey {
public:
    PressedKey(xkb_keymap &keymap, xkb_layout_index_t layout, XKeycode key, bool shift,
               bool numLock)
        : shift_(xkb_keymap_mod_get_index(&keymap, XKB_MOD_NAME_SHIFT)),
          state_(xkb_state_new(&keymap)),
          key_(key) {
        const auto maskOf = [](xkb_mod_index_t index) {
            return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
        };
        const xkb_mod_mask_t numLockMask =
            maskOf(xkb_keymap_mod_get_index(&keymap, XKB_MOD_NAME_NUM));
        xkb_state_update_mask(state_.get(), shift ? maskOf(shift_) : 0, 0,
                              numLock ? numLockMask : 0, 0, 0, layout);
    }

    [[nodiscard]] xkb_keysym_t symbol() const {
        return xkb_state_key_get_one_sym(state_.get(), key_);
    }
    /// Is Shift what makes it type this, and so no modifier to KWin? Letters have one key for both.
    [[nodiscard]] bool isShiftUsedUp() const {
        return xkb_state_mod_index_is_consumed2(state_.get(), key_, shift_,
                                                XKB_CONSUMED_MODE_GTK) == 1 &&
               symbol() != XKB_KEY_ISO_Left_Tab &&
               !QChar::isLetter(static_cast<char32_t>(xkb_keysym_to_utf32(symbol())));
    }

private:
    const xkb_mod_index_t shift_;
    const std::unique_ptr<xkb_state, StateUnref> state_;
    const XKeycode key_;
};

bool isLatin(xkb_keysym_t symbol) {
    constexpr char32_t kLastOfLatin1 = 0xFF;
    return xkb_keysym_to_utf32(symbol) <= kLastOfLatin1;
}

/// What a key of another alphabet types in the first layout that has Latin letters there.
std::optional<xkb_layout_index_t> latinLayout(xkb_keymap &keymap, XKeycode key) {
    for (xkb_layout_index_t i = 0; i < xkb_keymap_num_layouts_for_key(&keymap, key); ++i) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(&keymap, key, i, 0, &symbols) == 1 &&
            isLatin(*symbols))
            return i;
    }
    return std::nullopt;
}

}  // namespace

std::vector<int> keyNumbersOf(const Hotkey &hotkey, xkb_keymap &keymap, xkb_layout_index_t layout) {
    const std::optional<XKeycode> key = toXKeycode(hotkey.keyCode);
    if (!key)
        return {};
    Qt::KeyboardModifiers modifiers;
    for (const auto &[flag, modifier] : kModifiers)
        modifiers.setFlag(modifier, hotkey.modifierFlags.contains(flag));
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);

    std::vector<int> numbers;
    const auto add = [&](xkb_layout_index_t in, bool numLock) {
        const PressedKey pressed(keymap, in, *key, shift, numLock);
        std::optional<int> qtKey = qtKeyOf(pressed.symbol());
        // KWin takes Shift and Tab for that as well.
        if (qtKey == Qt::Key_Backtab)
            qtKey = Qt::Key_Tab;
        if (!qtKey)
            return;
        Qt::KeyboardModifiers left = modifiers;
        left.setFlag(Qt::ShiftModifier, shift && !pressed.isShiftUsedUp());
        const int number = static_cast<int>(left.toInt()) | *qtKey;
        if (std::ranges::find(numbers, number) == numbers.end())
            numbers.push_back(number);
    };
    add(layout, false);
    add(layout, true);
    if (!isLatin(PressedKey(keymap, layout, *key, false, false).symbol())) {
        if (const auto latin = latinLayout(keymap, *key))
            add(*latin, false);
    }
    return numbers;
}

}  // namespace kestrelbay::plasma
