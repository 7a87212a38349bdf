#pragma once

#include <optional>
#include <set>

#include <QString>

#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/keymap/KeyGrabs.h"

namespace kestrelbay::x11 {

/// Asks a server which keys its clients have grabbed, which it tells only by refusing
/// the same grab to another client. On a connection of its own, so that the grabs of this
/// program count as foreign too, and none of them is lost.
class ForeignGrabs {
public:
    explicit ForeignGrabs(const QString &displayName);

    /// By XInput 2, of which the core protocol knows nothing. False without a server.
    [[nodiscard]] bool hasByXInput(const KeyGrab &grab) const;
    /// By the core protocol. False without a server.
    [[nodiscard]] bool hasByCore(const KeyGrab &grab) const;

private:
    XConnection connection_;
};

}  // namespace kestrelbay::x11
