#pragma once

#include <cstdint>
#include <span>

#include <QByteArray>
#include <QList>
#include <QString>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

// Properties are written by other programs: whatever has not the expected form
// reads as empty. No reply at all means that the window has gone.

using PropertyReply = Reply<xcb_get_property_reply_t>;

/// As long as the reply lives. Empty unless the property is a list of 32-bit items.
[[nodiscard]] std::span<const std::uint32_t> propertyWords(const PropertyReply &reply);

/// Empty unless the property is a list of bytes.
[[nodiscard]] QByteArray propertyBytes(const PropertyReply &reply);

/// UTF-8 where it is valid, otherwise Latin-1; ends at the first NUL.
[[nodiscard]] QString propertyText(const PropertyReply &reply);

/// The texts of a list whose items are separated by NUL.
[[nodiscard]] QList<QString> propertyTexts(const PropertyReply &reply);

}  // namespace kestrelbay::x11
