#include "platform/linux/x11/keymap/KeyCaps.h"

#include <algorithm>
#include <array>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "keys/KeyCap.h"
#include "platform/linux/keycodes/KeyCodeTable.h"

namespace kestrelbay::x11 {

namespace {

/// Key codes of macOS are below this.
constexpr std::uint16_t kKeyCodes = 128;

struct DeadKey {
    xkb_keysym_t symbol;
    char32_t accent;
};

constexpr auto kDeadKeys = std::to_array<DeadKey>({
    {XKB_KEY_dead_grave, U'`'},
    {XKB_KEY_dead_acute, U'´'},
    {XKB_KEY_dead_circumflex, U'^'},
    {XKB_KEY_dead_tilde, U'~'},
    {XKB_KEY_dead_macron, U'¯'},
    {XKB_KEY_dead_breve, U'˘'},
    {XKB_KEY_dead_abovedot, U'˙'},
    {XKB_KEY_dead_diaeresis, U'¨'},
    {XKB_KEY_dead_abovering, U'°'},
    {XKB_KEY_dead_doubleacute, U'˝'},
    {XKB_KEY_dead_caron, U'ˇ'},
    {XKB_KEY_dead_cedilla, U'¸'},
    {XKB_KEY_dead_ogonek, U'˛'},
});

QString typed(xkb_keymap &keymap, XKeycode code, xkb_layout_index_t layout,
              xkb_level_index_t level) {
    const xkb_keysym_t *symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(&keymap, code, layout, level, &symbols) != 1)
        return {};
    const auto *const dead = std::ranges::find(kDeadKeys, *symbols, &DeadKey::symbol);
    const char32_t character =
        dead == kDeadKeys.end() ? char32_t(xkb_keysym_to_utf32(*symbols)) : dead->accent;
    return character == 0 ? QString() : QString::fromUcs4(&character, 1);
}

}  // namespace

std::map<KeyCode, QString> keyCaps(xkb_keymap &keymap, xkb_layout_index_t layout) {
    std::map<KeyCode, QString> caps;
    for (std::uint16_t number = 0; number < kKeyCodes; ++number) {
        const auto code = toXKeycode(KeyCode{number});
        const QString cap =
            code ? keyCap(typed(keymap, *code, layout, 0), typed(keymap, *code, layout, 1))
                 : QString();
        if (!cap.isEmpty())
            caps.emplace(KeyCode{number}, cap);
    }
    return caps;
}

}  // namespace kestrelbay::x11
