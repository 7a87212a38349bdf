#pragma once

#include <array>
#include <cstdint>

#include <QString>

#include "support/Xcb.h"

namespace kestrelbay::testing {

/// A system tray that owns the selection of trays and says so. Ends with its owner.
class FakeTray {
public:
    explicit FakeTray(const QString &displayName);

    /// The colour it wants symbols in: red, green and blue of 16 bits.
    void setForeground(const std::array<std::uint32_t, 3> &color);

    /// Its panel, painted all over in a colour (0xRRGGBB), at the top of the screen.
    void paintPanel(std::uint32_t color);

private:
    [[nodiscard]] xcb_atom_t atom(const char *name) const;
    void sync() const;

    Connection connection_;
    xcb_window_t window_;
    xcb_window_t panel_ = XCB_NONE;
};

}  // namespace kestrelbay::testing
