#include "desktop/display/Typing.h"

namespace kestrelbay::desktop {

std::optional<KeyPosition> positionOf(XClient &client, QChar character) {
    const xcb_setup_t *setup = xcb_get_setup(client.get());
    const xcb_keycode_t first = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - first + 1);
    const Reply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        client.get(), xcb_get_keyboard_mapping(client.get(), first, count), nullptr));
    if (!reply)
        return std::nullopt;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    const int perKey = reply->keysyms_per_keycode;
    for (int key = 0; key < count; ++key) {
        for (int level = 0; level < 2 && level < perKey; ++level) {
            // Of Latin-1 the symbols are numbered as in Unicode.
            if (symbols[key * perKey + level] == character.unicode())
                return KeyPosition{.keycode = static_cast<std::uint8_t>(first + key),
                                   .isShifted = level == 1};
        }
    }
    return std::nullopt;
}

}  // namespace kestrelbay::desktop
