#pragma once

#include <memory>

#include <xkbcommon/xkbcommon.h>

namespace kestrelbay::x11 {

struct XkbUnref {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state *state) const { xkb_state_unref(state); }
};

/// Owner of anything libxkbcommon hands out to be let go of.
template <class T>
using XkbOwner = std::unique_ptr<T, XkbUnref>;

}  // namespace kestrelbay::x11
