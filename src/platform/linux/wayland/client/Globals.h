#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/wayland/client/Connection.h"

struct wl_interface;
struct wl_registry;

namespace kestrelbay::wayland {

/// What a compositor offered when it was asked. Has to be gone before the connection is.
class Globals {
public:
    /// Asks, and waits for the answer: nothing is offered when there is none.
    explicit Globals(Connection &connection);
    ~Globals();
    Globals(const Globals &) = delete;
    Globals &operator=(const Globals &) = delete;

    /// 0 when it is not offered.
    [[nodiscard]] std::uint32_t versionOf(const wl_interface &interface) const;
    /// The first one of this kind, which the caller owns, in a version that both sides know: this
    /// one or below. Null when none is offered.
    template <typename Object>
    [[nodiscard]] Object *bind(const wl_interface &interface, std::uint32_t version) const {
        return static_cast<Object *>(bindObject(interface, version));
    }

private:
    struct Global {
        std::uint32_t name;
        std::string interface;
        std::uint32_t version;
    };
    struct Listener;

    [[nodiscard]] const Global *find(const wl_interface &interface) const;
    [[nodiscard]] void *bindObject(const wl_interface &interface, std::uint32_t version) const;

    std::unique_ptr<wl_registry, ReleaseProxy> registry_;
    std::vector<Global> globals_;
};

}  // namespace kestrelbay::wayland
