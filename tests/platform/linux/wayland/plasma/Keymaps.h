#pragma once

#include <memory>

#include <xkbcommon/xkbcommon.h>

namespace kestrelbay::testing {

struct KeymapUnref {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
};
using KeymapOwner = std::unique_ptr<xkb_keymap, KeymapUnref>;

/// Of an ordinary keyboard with these layouts, as "us,de".
[[nodiscard]] inline KeymapOwner makeKeymap(const char *layouts) {
    const std::unique_ptr<xkb_context, KeymapUnref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = ""};
    return KeymapOwner(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

}  // namespace kestrelbay::testing
