#include "platform/linux/x11/keymap/KeyCaps.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "keys/KeyCap.h"
#include "platform/linux/keycodes/KeyCodeTable.h"

namespace kestrelbay::x11 {

namespace {

/// Key codes of macOS are below this.
constexpr std::uint16_t kKeyCodes = 128;
/// By xkb_keysym_get_name().
constexpr std::size_t kLongestName = 64;

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

/// A text for each key that has one.
std::map<KeyCode, QString> textsOfKeys(auto textOf) {
    std::map<KeyCode, QString> texts;
    for (std::uint16_t number = 0; number < kKeyCodes; ++number) {
        const auto code = toXKeycode(KeyCode{number});
        if (const QString text = code ? textOf(*code) : QString(); !text.isEmpty())
            texts.emplace(KeyCode{number}, text);
    }
    return texts;
}

}  // namespace

std::map<KeyCode, QString> keyCaps(xkb_keymap &keymap, xkb_layout_index_t layout) {
    return textsOfKeys([&keymap, layout](XKeycode code) {
        return keyCap(typed(keymap, code, layout, 0), typed(keymap, code, layout, 1));
    });
}

std::map<KeyCode, QString> symbolNames(xkb_keymap &keymap, xkb_layout_index_t layout) {
    return textsOfKeys([&keymap, layout](XKeycode code) {
        const xkb_keysym_t *symbols = nullptr;
        std::array<char, kLongestName> name{};
        return xkb_keymap_key_get_syms_by_level(&keymap, code, layout, 0, &symbols) == 1 &&
                       xkb_keysym_get_name(*symbols, name.data(), name.size()) > 0
                   ? QString::fromLatin1(name.data())
                   : QString();
    });
}

}  // namespace kestrelbay::x11
