#pragma once

#include <set>

#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/keymap/KeyGrabs.h"

namespace kestrelbay::x11 {

/// The passive, synchronous key grabs of one connection, on every root window.
/// The server gives a combination to one client only, so each request is checked.
class KeyGrabber {
public:
    /// The connection has to outlive it.
    explicit KeyGrabber(const XConnection &connection) : connection_(connection) {}

    /// Makes the wanted grabs the only ones. New ones are asked for before old
    /// ones are let go, so a hotkey wanted before and after is held throughout;
    /// those refused so far are asked for again.
    void apply(const std::set<KeyGrab> &wanted);

    /// The server has dropped them all.
    void forget();

    /// The wanted grabs that another client holds on some root window.
    [[nodiscard]] const std::set<KeyGrab> &refused() const { return refused_; }
    [[nodiscard]] bool wants(const KeyGrab &grab) const { return wanted_.contains(grab); }

private:
    [[nodiscard]] std::set<KeyGrab> request(const std::set<KeyGrab> &grabs);
    void release(const std::set<KeyGrab> &grabs);

    const XConnection &connection_;
    std::set<KeyGrab> wanted_;
    std::set<KeyGrab> refused_;
};

}  // namespace kestrelbay::x11
