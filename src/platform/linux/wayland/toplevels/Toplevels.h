#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/wayland/windows/Desktop.h"
#include "platform/linux/wayland/windows/LastUsed.h"

namespace kestrelbay::wayland {

/// What is known of windows beyond one connection.
struct ToplevelHistory {
    /// The last number that a window was given.
    std::int64_t lastId = 0;
    LastUsed used;
};

/// The windows as a protocol tells of them, and its requests. They are told of when the connection
/// takes in its events, and asked for when it sends. Any one thread at a time.
class Toplevels {
public:
    virtual ~Toplevels() = default;

    /// False when all is known of the windows only after another round trip.
    [[nodiscard]] virtual bool isWhole() const = 0;
    /// Front-most first, as far as the protocol tells. Whichever becomes active is noted in the
    /// history, too.
    [[nodiscard]] virtual std::vector<DesktopWindow> windows() const = 0;

    // Those that are gone are passed over.
    virtual void setMinimized(std::int64_t window, bool isMinimized) = 0;
    virtual void activate(std::int64_t window) = 0;

protected:
    Toplevels() = default;
    Toplevels(const Toplevels &) = default;
    Toplevels &operator=(const Toplevels &) = default;
};

}  // namespace kestrelbay::wayland
