#pragma once

#include <xcb/xcb.h>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// Announces to the server the XInput that raw events need. False when it has none.
[[nodiscard]] bool hasRawEvents(xcb_connection_t *connection);

/// From now on the server tells of every key that goes down or up, whoever has grabbed the
/// keyboard, and of keyboards that come and go.
void selectRawKeys(const XConnection &connection);

}  // namespace kestrelbay::x11
