#include "platform/linux/wayland/toplevels/FakeCompositor.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <tuple>
#include <vector>

#include <wayland-server.h>

#include "platform/linux/wayland/server/ServerThread.h"

#include "wlr-foreign-toplevel-management-unstable-v1-server.h"

namespace kestrelbay::testing {

namespace {

struct Toplevel {
    QByteArray appId;
    bool isMinimized = false;
    QByteArray parent{};
    /// One a client.
    std::vector<wl_resource *> handles{};
};

}  // namespace

struct FakeCompositor::Server {
    explicit Server(Minimizing how) : minimizing(how) {}

    const Minimizing minimizing;
    std::vector<wl_resource *> managers;
    std::vector<std::unique_ptr<Toplevel>> toplevels;
    QByteArray focused;
    QByteArray keymap;
    std::vector<wl_resource *> keyboards;
    QByteArrayList requests;
    ServerThread thread;

    static Server &of(void *data) { return *static_cast<Server *>(data); }
    static Server &of(wl_resource *resource) { return of(wl_resource_get_user_data(resource)); }

    Toplevel *find(const QByteArray &appId) {
        const auto found = std::ranges::find(toplevels, appId,
                                             [](const auto &toplevel) { return toplevel->appId; });
        return found == toplevels.end() ? nullptr : found->get();
    }
    /// Null once the window is closed.
    Toplevel *find(wl_resource *handle) {
        const auto found = std::ranges::find_if(toplevels, [handle](const auto &toplevel) {
            return std::ranges::find(toplevel->handles, handle) != toplevel->handles.end();
        });
        return found == toplevels.end() ? nullptr : found->get();
    }

    void tellState(const Toplevel &toplevel) {
        wl_array states;
        wl_array_init(&states);
        const auto add = [&](std::uint32_t state) {
            *static_cast<std::uint32_t *>(wl_array_add(&states, sizeof state)) = state;
        };
        if (toplevel.isMinimized)
            add(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
        if (toplevel.appId == focused)
            add(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        for (wl_resource *const handle : toplevel.handles) {
            zwlr_foreign_toplevel_handle_v1_send_state(handle, &states);
            zwlr_foreign_toplevel_handle_v1_send_done(handle);
        }
        wl_array_release(&states);
    }
    void tellStates() {
        for (const auto &toplevel : toplevels)
            tellState(*toplevel);
    }
    /// After the requests that came with this one, as real compositors do.
    void tellStatesLater() {
        wl_event_loop_add_idle(
            wl_display_get_event_loop(thread.display()), [](void *data) { of(data).tellStates(); },
            this);
    }
    void focus(const QByteArray &appId) {
        focused = appId;
        if (Toplevel *const toplevel = find(appId))
            toplevel->isMinimized = false;
    }

    void introduce(Toplevel &toplevel, wl_resource *manager) {
        wl_resource *const handle = wl_resource_create(wl_resource_get_client(manager),
                                                       &zwlr_foreign_toplevel_handle_v1_interface,
                                                       wl_resource_get_version(manager), 0);
        wl_resource_set_implementation(handle, &kHandle, this, [](wl_resource *gone) {
            for (const auto &other : of(gone).toplevels)
                std::erase(other->handles, gone);
        });
        toplevel.handles.push_back(handle);
        zwlr_foreign_toplevel_manager_v1_send_toplevel(manager, handle);
        zwlr_foreign_toplevel_handle_v1_send_title(handle, toplevel.appId + " window");
        zwlr_foreign_toplevel_handle_v1_send_app_id(handle, toplevel.appId);
    }

    void note(const char *request, wl_resource *handle) {
        if (Toplevel *const toplevel = find(handle))
            requests.append(request + QByteArray(" ") + toplevel->appId);
    }
    static void minimize(wl_resource *handle, bool isMinimized) {
        Server &server = of(handle);
        server.note(isMinimized ? "minimize" : "restore", handle);
        Toplevel *const toplevel = server.find(handle);
        if (!toplevel || server.minimizing == Minimizing::Ignores)
            return;
        toplevel->isMinimized = isMinimized;
        if (isMinimized && server.focused == toplevel->appId)
            server.focused.clear();
        server.tellStatesLater();
    }
    static void activate(wl_resource *handle) {
        Server &server = of(handle);
        server.note("activate", handle);
        if (Toplevel *const toplevel = server.find(handle)) {
            server.focus(toplevel->appId);
            server.tellStatesLater();
        }
    }

    static const struct zwlr_foreign_toplevel_handle_v1_interface kHandle;

    static void bindManager(wl_client *client, void *data, std::uint32_t version,
                            std::uint32_t id) {
        Server &server = of(data);
        wl_resource *const manager = wl_resource_create(
            client, &zwlr_foreign_toplevel_manager_v1_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(
            manager, nullptr, data, [](wl_resource *gone) { std::erase(of(gone).managers, gone); });
        server.managers.push_back(manager);
        for (const auto &toplevel : server.toplevels) {
            server.introduce(*toplevel, manager);
            server.tellState(*toplevel);
        }
    }
    static void bindSeat(wl_client *client, void *data, std::uint32_t version, std::uint32_t id) {
        wl_resource *const seat =
            wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
        wl_resource_set_implementation(seat, &kSeat, data, nullptr);
        wl_seat_send_capabilities(seat, WL_SEAT_CAPABILITY_KEYBOARD);
    }
    void sendKeymap(wl_resource *keyboard) const {
        const auto size = static_cast<std::uint32_t>(keymap.size() + 1);
        const int file = ::memfd_create("keymap", MFD_CLOEXEC);
        std::ignore = ::write(file, keymap.constData(), size);
        wl_keyboard_send_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, size);
        ::close(file);
    }
    static void makeKeyboard(wl_client *client, wl_resource *seat, std::uint32_t id) {
        Server &server = of(seat);
        wl_resource *const keyboard =
            wl_resource_create(client, &wl_keyboard_interface, wl_resource_get_version(seat), id);
        wl_resource_set_implementation(keyboard, nullptr, &server, [](wl_resource *gone) {
            std::erase(of(gone).keyboards, gone);
        });
        server.keyboards.push_back(keyboard);
        server.sendKeymap(keyboard);
    }

    static const struct wl_seat_interface kSeat;
};

const struct zwlr_foreign_toplevel_handle_v1_interface FakeCompositor::Server::kHandle = {
    .set_maximized = nullptr,
    .unset_maximized = nullptr,
    .set_minimized = [](wl_client *, wl_resource *handle) { minimize(handle, true); },
    .unset_minimized = [](wl_client *, wl_resource *handle) { minimize(handle, false); },
    .activate = [](wl_client *, wl_resource *handle, wl_resource *) { activate(handle); },
    .close = nullptr,
    .set_rectangle = nullptr,
    .destroy = [](wl_client *, wl_resource *handle) { wl_resource_destroy(handle); },
    .set_fullscreen = nullptr,
    .unset_fullscreen = nullptr,
};

const struct wl_seat_interface FakeCompositor::Server::kSeat = {
    .get_pointer = nullptr,
    .get_keyboard = &makeKeyboard,
    .get_touch = nullptr,
    .release = nullptr,
};

FakeCompositor::FakeCompositor(Minimizing minimizing)
    : server_(std::make_unique<Server>(minimizing)) {
    wl_display *const display = server_->thread.display();
    wl_global_create(display, &wl_seat_interface, 1, server_.get(), &Server::bindSeat);
    wl_global_create(display, &zwlr_foreign_toplevel_manager_v1_interface, 3, server_.get(),
                     &Server::bindManager);
    server_->thread.start();
}

FakeCompositor::~FakeCompositor() {
    server_->thread.stop();
}

QString FakeCompositor::socketPath() const {
    return server_->thread.socketPath();
}

void FakeCompositor::run(const std::function<void()> &work) {
    server_->thread.run(work);
}

void FakeCompositor::open(const QByteArray &appId) {
    run([&] {
        server_->toplevels.push_back(std::make_unique<Toplevel>(Toplevel{.appId = appId}));
        for (wl_resource *const manager : server_->managers)
            server_->introduce(*server_->toplevels.back(), manager);
        server_->focus(appId);
        server_->tellStates();
    });
}

void FakeCompositor::close(const QByteArray &appId) {
    run([&] {
        for (wl_resource *const handle : server_->find(appId)->handles)
            zwlr_foreign_toplevel_handle_v1_send_closed(handle);
        std::erase_if(server_->toplevels,
                      [&](const auto &toplevel) { return toplevel->appId == appId; });
    });
}

void FakeCompositor::focus(const QByteArray &appId) {
    run([&] {
        server_->focus(appId);
        server_->tellStates();
    });
}

void FakeCompositor::setParent(const QByteArray &appId, const QByteArray &parent) {
    run([&] {
        const Toplevel &of = *server_->find(parent);
        const Toplevel &child = *server_->find(appId);
        // Both have their clients in the same order.
        for (std::size_t i = 0; i < child.handles.size(); ++i)
            zwlr_foreign_toplevel_handle_v1_send_parent(child.handles[i], of.handles[i]);
    });
}

void FakeCompositor::setTitle(const QByteArray &appId, const QByteArray &title) {
    run([&] {
        for (wl_resource *const handle : server_->find(appId)->handles)
            zwlr_foreign_toplevel_handle_v1_send_title(handle, title);
    });
}

void FakeCompositor::setKeymap(const QByteArray &text) {
    run([&] {
        server_->keymap = text;
        for (wl_resource *const keyboard : server_->keyboards)
            server_->sendKeymap(keyboard);
    });
}

void FakeCompositor::hang() {
    server_->thread.hang();
}

void FakeCompositor::hangUp() {
    server_->thread.hangUp();
}

QByteArrayList FakeCompositor::takeRequests() {
    QByteArrayList requests;
    run([&] { requests.swap(server_->requests); });
    return requests;
}

}  // namespace kestrelbay::testing
