#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <QStringList>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

// Properties are written by other programs: whatever has not the expected form
// reads as empty. No reply at all means that the window has gone.

using PropertyReply = Reply<xcb_get_property_reply_t>;

/// Asks for the first units of four bytes of a property. Each answer has to be taken,
/// or it stays in memory.
[[nodiscard]] xcb_get_property_cookie_t askProperty(const XConnection &connection,
                                                    xcb_window_t window, xcb_atom_t property,
                                                    xcb_atom_t type, std::uint32_t units);
[[nodiscard]] PropertyReply takeProperty(const XConnection &connection,
                                         xcb_get_property_cookie_t cookie);
/// Both in one, with a round trip.
[[nodiscard]] PropertyReply readProperty(const XConnection &connection, xcb_window_t window,
                                         xcb_atom_t property, xcb_atom_t type, std::uint32_t units);

/// As long as the reply lives. Empty unless the property is a list of 32-bit items.
[[nodiscard]] std::span<const std::uint32_t> propertyWords(const PropertyReply &reply);

/// The first of them.
[[nodiscard]] std::optional<std::uint32_t> propertyWord(const PropertyReply &reply);

/// The texts of a list whose items are separated by NUL: UTF-8 where it is valid,
/// otherwise Latin-1.
[[nodiscard]] QStringList propertyTexts(const PropertyReply &reply);

/// The first of them.
[[nodiscard]] QString propertyText(const PropertyReply &reply);

}  // namespace kestrelbay::x11
