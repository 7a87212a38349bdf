#include "platform/linux/wayland/client/Globals.h"

#include <algorithm>

#include <wayland-client.h>

namespace kestrelbay::wayland {

struct Globals::Listener {
    static void onGlobal(void *self, wl_registry * /*registry*/, std::uint32_t name,
                         const char *interface, std::uint32_t version) {
        static_cast<Globals *>(self)->globals_.push_back(
            {.name = name, .interface = interface, .version = version});
    }
    static void onRemoved(void *self, wl_registry * /*registry*/, std::uint32_t name) {
        std::erase_if(static_cast<Globals *>(self)->globals_,
                      [name](const Global &global) { return global.name == name; });
    }
    static constexpr wl_registry_listener kTable{.global = &onGlobal, .global_remove = &onRemoved};
};

Globals::Globals(Connection &connection) {
    if (!connection.isOpen())
        return;
    registry_.reset(wl_display_get_registry(connection.display()));
    wl_registry_add_listener(registry_.get(), &Listener::kTable, this);
    connection.roundTrip();
}

Globals::~Globals() = default;

const Globals::Global *Globals::find(const wl_interface &interface) const {
    const auto found = std::ranges::find(globals_, interface.name, &Global::interface);
    return found == globals_.end() ? nullptr : &*found;
}

std::uint32_t Globals::versionOf(const wl_interface &interface) const {
    const Global *const global = find(interface);
    return global ? global->version : 0;
}

void *Globals::bindObject(const wl_interface &interface, std::uint32_t version) const {
    const Global *const global = find(interface);
    return global ? wl_registry_bind(registry_.get(), global->name, &interface,
                                     std::min(version, global->version))
                  : nullptr;
}

}  // namespace kestrelbay::wayland
