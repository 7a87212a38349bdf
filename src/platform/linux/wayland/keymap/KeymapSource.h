#pragma once

#include <xkbcommon/xkbcommon.h>

namespace kestrelbay::wayland {

/// Where a keymap comes from.
class KeymapSource {
public:
    virtual ~KeymapSource() = default;

    /// The latest one; none while there never was any.
    [[nodiscard]] virtual xkb_keymap *get() const = 0;

protected:
    KeymapSource() = default;
    KeymapSource(const KeymapSource &) = default;
    KeymapSource &operator=(const KeymapSource &) = default;
};

}  // namespace kestrelbay::wayland
