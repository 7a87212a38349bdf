#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include <QString>

#include <xcb/xcb.h>

namespace kestrelbay::testing {

/// A system tray that owns the selection of trays and says so. Ends with its owner.
class FakeTray {
public:
    explicit FakeTray(const QString &displayName);

    /// The colour it wants symbols in: red, green and blue of 16 bits.
    void setForeground(const std::array<std::uint32_t, 3> &color);

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };

    [[nodiscard]] xcb_atom_t atom(const char *name) const;
    void sync() const;

    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    xcb_window_t window_;
};

}  // namespace kestrelbay::testing
