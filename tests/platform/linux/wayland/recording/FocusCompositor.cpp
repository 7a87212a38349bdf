#include "platform/linux/wayland/recording/FocusCompositor.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include <wayland-server.h>

#include "platform/linux/wayland/server/ServerThread.h"

#include "keyboard-shortcuts-inhibit-unstable-v1-server.h"

namespace kestrelbay::testing {

namespace {

void destroy(wl_client * /*client*/, wl_resource *resource) {
    wl_resource_destroy(resource);
}

}  // namespace

struct FocusCompositor::Server {
    Server(Inhibiting how, Keyboard which) : inhibiting(how), seatKeyboard(which) {}

    const Inhibiting inhibiting;
    const Keyboard seatKeyboard;
    std::vector<wl_resource *> surfaces;
    std::vector<wl_resource *> keyboards;
    wl_resource *focused = nullptr;
    wl_resource *inhibitor = nullptr;
    wl_resource *inhibitedSurface = nullptr;
    ServerThread thread;

    static Server &of(void *data) { return *static_cast<Server *>(data); }
    static Server &of(wl_resource *resource) { return of(wl_resource_get_user_data(resource)); }

    void bindGlobals() {
        wl_display *const display = thread.display();
        wl_global_create(display, &wl_compositor_interface, 1, this, &bindCompositor);
        wl_global_create(display, &wl_seat_interface, 5, this, &bindSeat);
        if (inhibiting != Inhibiting::Lacking)
            wl_global_create(display, &zwp_keyboard_shortcuts_inhibit_manager_v1_interface, 1, this,
                             &bindManager);
    }

    static wl_resource *make(wl_client *client, const wl_interface &interface, int version,
                             std::uint32_t id, const void *implementation, void *data,
                             wl_resource_destroy_func_t gone = nullptr) {
        wl_resource *const resource = wl_resource_create(client, &interface, version, id);
        wl_resource_set_implementation(resource, implementation, data, gone);
        return resource;
    }
    static void bindCompositor(wl_client *client, void *data, std::uint32_t version,
                               std::uint32_t id) {
        make(client, wl_compositor_interface, static_cast<int>(version), id, &kCompositor, data);
    }
    static void bindSeat(wl_client *client, void *data, std::uint32_t version, std::uint32_t id) {
        wl_resource *const seat =
            make(client, wl_seat_interface, static_cast<int>(version), id, &kSeat, data);
        wl_seat_send_capabilities(
            seat, of(data).seatKeyboard == Keyboard::Has ? WL_SEAT_CAPABILITY_KEYBOARD : 0);
    }
    static void bindManager(wl_client *client, void *data, std::uint32_t version,
                            std::uint32_t id) {
        make(client, zwp_keyboard_shortcuts_inhibit_manager_v1_interface, static_cast<int>(version),
             id, &kManager, data);
    }

    static void makeSurface(wl_client *client, wl_resource *compositor, std::uint32_t id) {
        Server &server = of(compositor);
        server.surfaces.push_back(
            make(client, wl_surface_interface, 1, id, &kSurface, &server, &forgetSurface));
    }
    static void forgetSurface(wl_resource *gone) {
        Server &server = of(gone);
        std::erase(server.surfaces, gone);
        for (wl_resource **const known : {&server.focused, &server.inhibitedSurface})
            *known = *known == gone ? nullptr : *known;
    }
    static void makeKeyboard(wl_client *client, wl_resource *seat, std::uint32_t id) {
        Server &server = of(seat);
        // As compositors do, of which one had no keyboard ever.
        if (server.seatKeyboard == Keyboard::Lacks) {
            wl_resource_post_error(seat, WL_SEAT_ERROR_MISSING_CAPABILITY, "no keyboard");
            return;
        }
        wl_resource *const keyboard =
            make(client, wl_keyboard_interface, wl_resource_get_version(seat), id, &kKeyboard,
                 &server, [](wl_resource *gone) { std::erase(of(gone).keyboards, gone); });
        server.keyboards.push_back(keyboard);
        const int keymap = ::memfd_create("keymap", MFD_CLOEXEC);
        wl_keyboard_send_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_NO_KEYMAP, keymap, 0);
        ::close(keymap);
        if (server.focused)
            tellEnter(keyboard, server.focused);
    }
    static void tellEnter(wl_resource *keyboard, wl_resource *surface) {
        wl_array pressed;
        wl_array_init(&pressed);
        wl_keyboard_send_enter(keyboard, 0, surface, &pressed);
        wl_array_release(&pressed);
    }
    void focus(wl_resource *surface) {
        for (wl_resource *const keyboard : keyboards) {
            if (focused)
                wl_keyboard_send_leave(keyboard, 0, focused);
            if (surface)
                tellEnter(keyboard, surface);
        }
        focused = surface;
    }

    static void inhibit(wl_client *client, wl_resource *manager, std::uint32_t id,
                        wl_resource *surface, wl_resource * /*seat*/) {
        Server &server = of(manager);
        if (server.inhibitedSurface == surface) {
            wl_resource_post_error(
                manager, ZWP_KEYBOARD_SHORTCUTS_INHIBIT_MANAGER_V1_ERROR_ALREADY_INHIBITED,
                "it is already");
            return;
        }
        server.inhibitedSurface = surface;
        server.inhibitor = make(client, zwp_keyboard_shortcuts_inhibitor_v1_interface, 1, id,
                                &kInhibitor, &server, [](wl_resource *gone) {
                                    of(gone).inhibitor = nullptr;
                                    of(gone).inhibitedSurface = nullptr;
                                });
        if (server.inhibiting == Inhibiting::Granted)
            zwp_keyboard_shortcuts_inhibitor_v1_send_active(server.inhibitor);
    }

    static const struct wl_compositor_interface kCompositor;
    static const struct wl_surface_interface kSurface;
    static const struct wl_seat_interface kSeat;
    static const struct wl_keyboard_interface kKeyboard;
    static const struct zwp_keyboard_shortcuts_inhibit_manager_v1_interface kManager;
    static const struct zwp_keyboard_shortcuts_inhibitor_v1_interface kInhibitor;
};

const struct wl_compositor_interface FocusCompositor::Server::kCompositor = {
    .create_surface = &makeSurface,
    .create_region = nullptr,
};
// Of a surface that nobody draws.
const struct wl_surface_interface FocusCompositor::Server::kSurface = {.destroy = &destroy};
const struct wl_seat_interface FocusCompositor::Server::kSeat = {
    .get_pointer = nullptr,
    .get_keyboard = &makeKeyboard,
    .get_touch = nullptr,
    .release = &destroy,
};
const struct wl_keyboard_interface FocusCompositor::Server::kKeyboard = {.release = &destroy};
const struct zwp_keyboard_shortcuts_inhibit_manager_v1_interface FocusCompositor::Server::kManager =
    {
        .destroy = &destroy,
        .inhibit_shortcuts = &inhibit,
};
const struct zwp_keyboard_shortcuts_inhibitor_v1_interface FocusCompositor::Server::kInhibitor = {
    .destroy = &destroy,
};

FocusCompositor::FocusCompositor(Inhibiting inhibiting, Keyboard keyboard)
    : server_(std::make_unique<Server>(inhibiting, keyboard)) {
    server_->bindGlobals();
    server_->thread.start();
}

FocusCompositor::~FocusCompositor() {
    server_->thread.stop();
}

QString FocusCompositor::socketPath() const {
    return server_->thread.socketPath();
}

void FocusCompositor::focus(int surface) {
    server_->thread.run(
        [&] { server_->focus(server_->surfaces.at(static_cast<std::size_t>(surface))); });
}

void FocusCompositor::focusElsewhere() {
    server_->thread.run([&] { server_->focus(nullptr); });
}

void FocusCompositor::answer(bool isGranted) {
    server_->thread.run([&] {
        if (isGranted)
            zwp_keyboard_shortcuts_inhibitor_v1_send_active(server_->inhibitor);
        else
            zwp_keyboard_shortcuts_inhibitor_v1_send_inactive(server_->inhibitor);
    });
}

int FocusCompositor::inhibited() const {
    int which = -1;
    server_->thread.run([&] {
        const auto found = std::ranges::find(server_->surfaces, server_->inhibitedSurface);
        if (found != server_->surfaces.end())
            which = static_cast<int>(found - server_->surfaces.begin());
    });
    return which;
}

int FocusCompositor::keyboardCount() const {
    int count = 0;
    server_->thread.run([&] { count = static_cast<int>(server_->keyboards.size()); });
    return count;
}

}  // namespace kestrelbay::testing
