#include "platform/linux/wayland/toplevels/ForeignToplevels.h"

#include <algorithm>
#include <span>
#include <utility>

#include <wayland-client.h>

#include "platform/linux/wayland/client/IgnoreEvent.h"

#include "wlr-foreign-toplevel-management-unstable-v1.h"

#include "wlr-foreign-toplevel-management-unstable-v1-code.h"

namespace kestrelbay::wayland {

namespace {

/// The first that tells of parents.
constexpr std::uint32_t kForeignVersion = 3;
constexpr std::uint32_t kSeatVersion = 1;

struct DestroyHandle {
    void operator()(zwlr_foreign_toplevel_handle_v1 *handle) const {
        zwlr_foreign_toplevel_handle_v1_destroy(handle);
    }
};

}  // namespace

struct ForeignToplevels::Window {
    ForeignToplevels &owner;
    std::unique_ptr<zwlr_foreign_toplevel_handle_v1, DestroyHandle> handle;
    DesktopWindow told{};
    /// It has told all that it had to tell at first.
    bool isWhole = false;
};

struct ForeignToplevels::Listener {
    using Handle = zwlr_foreign_toplevel_handle_v1;

    static Window &window(void *data) { return *static_cast<Window *>(data); }

    static void onToplevel(void *self, zwlr_foreign_toplevel_manager_v1 * /*manager*/,
                           Handle *handle) {
        auto &owner = *static_cast<ForeignToplevels *>(self);
        const std::int64_t id = ++owner.history_.lastId;
        auto window = std::make_unique<Window>(
            Window{.owner = owner, .handle = std::unique_ptr<Handle, DestroyHandle>(handle)});
        window->told.id = id;
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &kHandle, window.get());
        owner.windows_.emplace(id, std::move(window));
    }
    static void onTitle(void *data, Handle * /*handle*/, const char *title) {
        window(data).told.title = QString::fromUtf8(title);
    }
    static void onAppId(void *data, Handle * /*handle*/, const char *appId) {
        WindowFacts &facts = window(data).told.facts;
        facts.className = QString::fromUtf8(appId);
        facts.instance = facts.className;
    }
    static void onState(void *data, Handle * /*handle*/, wl_array *array) {
        const std::span states(static_cast<const std::uint32_t *>(array->data),
                               array->size / sizeof(std::uint32_t));
        const auto has = [&](zwlr_foreign_toplevel_handle_v1_state state) {
            return std::ranges::find(states, std::uint32_t{state}) != states.end();
        };
        DesktopWindow &told = window(data).told;
        told.isHidden = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
        const bool isFocused = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        if (isFocused && !told.isFocused)
            window(data).owner.history_.used.note(told.id);
        told.isFocused = isFocused;
    }
    static void onDone(void *data, Handle * /*handle*/) { window(data).isWhole = true; }
    static void onClosed(void *data, Handle * /*handle*/) {
        Window &closed = window(data);
        closed.owner.windows_.erase(closed.told.id);
    }
    static void onParent(void *data, Handle * /*handle*/, Handle *parent) {
        WindowFacts &facts = window(data).told.facts;
        facts.transientFor =
            parent ? static_cast<std::uint32_t>(
                         window(zwlr_foreign_toplevel_handle_v1_get_user_data(parent)).told.id)
                   : 0;
        facts.type = parent ? WindowType::Dialog : WindowType::Normal;
    }

    static constexpr zwlr_foreign_toplevel_manager_v1_listener kManager{.toplevel = &onToplevel,
                                                                        .finished = &ignoreEvent};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener kHandle{
        .title = &onTitle,
        .app_id = &onAppId,
        .output_enter = &ignoreEvent,
        .output_leave = &ignoreEvent,
        .state = &onState,
        .done = &onDone,
        .closed = &onClosed,
        .parent = &onParent,
    };
};

ForeignToplevels::ForeignToplevels(const Globals &globals, ToplevelHistory &history)
    : history_(history),
      seat_(globals.bind<wl_seat>(wl_seat_interface, kSeatVersion)),
      manager_(globals.bind<zwlr_foreign_toplevel_manager_v1>(
          zwlr_foreign_toplevel_manager_v1_interface, kForeignVersion)) {
    zwlr_foreign_toplevel_manager_v1_add_listener(manager_.get(), &Listener::kManager, this);
}

ForeignToplevels::~ForeignToplevels() = default;

std::uint32_t ForeignToplevels::versionIn(const Globals &globals) {
    return std::min(kForeignVersion, globals.versionOf(zwlr_foreign_toplevel_manager_v1_interface));
}

std::vector<DesktopWindow> ForeignToplevels::windows() const {
    std::vector<DesktopWindow> windows;
    for (auto entry = windows_.rbegin(); entry != windows_.rend(); ++entry) {
        if (entry->second->isWhole)
            windows.push_back(entry->second->told);
    }
    return windows;
}

zwlr_foreign_toplevel_handle_v1 *ForeignToplevels::handleOf(std::int64_t window) const {
    const auto found = windows_.find(window);
    return found == windows_.end() ? nullptr : found->second->handle.get();
}

void ForeignToplevels::setMinimized(std::int64_t window, bool isMinimized) {
    zwlr_foreign_toplevel_handle_v1 *const handle = handleOf(window);
    if (!handle)
        return;
    if (isMinimized)
        zwlr_foreign_toplevel_handle_v1_set_minimized(handle);
    else
        zwlr_foreign_toplevel_handle_v1_unset_minimized(handle);
}

void ForeignToplevels::activate(std::int64_t window) {
    zwlr_foreign_toplevel_handle_v1 *const handle = handleOf(window);
    if (handle && seat_)
        zwlr_foreign_toplevel_handle_v1_activate(handle, seat_.get());
}

}  // namespace kestrelbay::wayland
