#include "platform/linux/wayland/toplevels/PlasmaWindows.h"

#include <algorithm>
#include <functional>
#include <utility>

#include <wayland-client.h>

#include "platform/linux/wayland/client/IgnoreEvent.h"

#include "plasma-window-management.h"

#include "plasma-window-management-code.h"

namespace kestrelbay::wayland {

namespace {

/// The first that tells of all that is heard here; every KWin since 5.21 has as much.
constexpr std::uint32_t kLeastPlasmaVersion = 13;
/// The listeners below know no events of later ones.
constexpr std::uint32_t kPlasmaVersion = 16;

struct DestroyWindow {
    void operator()(org_kde_plasma_window *window) const { org_kde_plasma_window_destroy(window); }
};

}  // namespace

struct PlasmaWindows::Window {
    PlasmaWindows &owner;
    std::unique_ptr<org_kde_plasma_window, DestroyWindow> object;
    /// As KWin calls it.
    QString name;
    DesktopWindow told{};
    /// It has told all that it had to tell at first.
    bool isWhole = false;
    bool isOutOfTaskBars = false;

    /// A dialog, or what X would call a utility.
    void settleType() {
        WindowFacts &facts = told.facts;
        if (facts.transientFor != 0)
            facts.type = WindowType::Dialog;
        else
            facts.type = isOutOfTaskBars ? WindowType::Utility : WindowType::Normal;
    }
};

struct PlasmaWindows::Listener {
    using Object = org_kde_plasma_window;
    using Management = org_kde_plasma_window_management;

    static Window &window(void *data) { return *static_cast<Window *>(data); }

    static void onStackingOrder(void *self, Management * /*management*/, const char *names) {
        static_cast<PlasmaWindows *>(self)->stack_ = QString::fromUtf8(names).split(u';');
    }
    static void onWindow(void *self, Management *management, std::uint32_t /*number*/,
                         const char *name) {
        auto &owner = *static_cast<PlasmaWindows *>(self);
        Object *const object =
            org_kde_plasma_window_management_get_window_by_uuid(management, name);
        const std::int64_t id = ++owner.history_.lastId;
        auto window = std::make_unique<Window>(
            Window{.owner = owner,
                   .object = std::unique_ptr<Object, DestroyWindow>(object),
                   .name = QString::fromUtf8(name)});
        window->told.id = id;
        org_kde_plasma_window_add_listener(object, &kWindow, window.get());
        owner.windows_.emplace(id, std::move(window));
    }

    static void onTitle(void *data, Object * /*object*/, const char *title) {
        window(data).told.title = QString::fromUtf8(title);
    }
    static void onAppId(void *data, Object * /*object*/, const char *appId) {
        window(data).told.facts.className = QString::fromUtf8(appId);
    }
    static void onResourceName(void *data, Object * /*object*/, const char *name) {
        window(data).told.facts.instance = QString::fromUtf8(name);
    }
    static void onPid(void *data, Object * /*object*/, std::uint32_t pid) {
        window(data).told.facts.pid = pid;
    }
    static void onState(void *data, Object * /*object*/, std::uint32_t flags) {
        const auto has = [flags](org_kde_plasma_window_management_state flag) {
            return (flags & flag) != 0;
        };
        Window &changed = window(data);
        DesktopWindow &told = changed.told;
        told.isHidden = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED);
        told.isUrgent = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_DEMANDS_ATTENTION);
        const bool isFocused = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE);
        if (isFocused && !told.isFocused)
            changed.owner.history_.used.note(told.id);
        told.isFocused = isFocused;
        changed.isOutOfTaskBars = has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPTASKBAR) ||
                                  has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPSWITCHER);
        changed.settleType();
    }
    static void onParent(void *data, Object * /*object*/, Object *parent) {
        window(data).told.facts.transientFor =
            parent ? static_cast<std::uint32_t>(
                         window(org_kde_plasma_window_get_user_data(parent)).told.id)
                   : 0;
        window(data).settleType();
    }
    static void onInitialState(void *data, Object * /*object*/) { window(data).isWhole = true; }
    static void onUnmapped(void *data, Object * /*object*/) {
        Window &unmapped = window(data);
        unmapped.owner.windows_.erase(unmapped.told.id);
    }

    // Later versions of the protocol have more events, which are never heard.
    static constexpr org_kde_plasma_window_management_listener kManagement = [] {
        org_kde_plasma_window_management_listener listener{};
        listener.show_desktop_changed = &ignoreEvent;
        listener.window = &ignoreEvent;
        listener.stacking_order_changed = &ignoreEvent;
        listener.stacking_order_uuid_changed = &onStackingOrder;
        listener.window_with_uuid = &onWindow;
        return listener;
    }();
    static constexpr org_kde_plasma_window_listener kWindow = [] {
        org_kde_plasma_window_listener listener{};
        listener.title_changed = &onTitle;
        listener.app_id_changed = &onAppId;
        listener.state_changed = &onState;
        listener.virtual_desktop_changed = &ignoreEvent;
        listener.themed_icon_name_changed = &ignoreEvent;
        listener.unmapped = &onUnmapped;
        listener.initial_state = &onInitialState;
        listener.parent_window = &onParent;
        listener.geometry = &ignoreEvent;
        listener.icon_changed = &ignoreEvent;
        listener.pid_changed = &onPid;
        listener.virtual_desktop_entered = &ignoreEvent;
        listener.virtual_desktop_left = &ignoreEvent;
        listener.application_menu = &ignoreEvent;
        listener.activity_entered = &ignoreEvent;
        listener.activity_left = &ignoreEvent;
        listener.resource_name_changed = &onResourceName;
        return listener;
    }();
};

PlasmaWindows::PlasmaWindows(const Globals &globals, ToplevelHistory &history)
    : history_(history),
      management_(globals.bind<org_kde_plasma_window_management>(
          org_kde_plasma_window_management_interface, kPlasmaVersion)) {
    org_kde_plasma_window_management_add_listener(management_.get(), &Listener::kManagement, this);
}

PlasmaWindows::~PlasmaWindows() = default;

std::uint32_t PlasmaWindows::versionIn(const Globals &globals) {
    const std::uint32_t offered = globals.versionOf(org_kde_plasma_window_management_interface);
    return offered < kLeastPlasmaVersion ? 0 : std::min(kPlasmaVersion, offered);
}

bool PlasmaWindows::isWhole() const {
    return std::ranges::all_of(windows_, [](const auto &entry) { return entry.second->isWhole; });
}

std::vector<DesktopWindow> PlasmaWindows::windows() const {
    std::vector<const Window *> ordered;
    for (const auto &[id, window] : windows_) {
        if (window->isWhole)
            ordered.push_back(window.get());
    }
    std::ranges::stable_sort(ordered, std::ranges::greater(),
                             [this](const Window *window) { return stack_.indexOf(window->name); });
    std::vector<DesktopWindow> windows;
    for (const Window *window : ordered) {
        DesktopWindow &told = windows.emplace_back(window->told);
        // Only windows of X have a name of their own beside that of their application.
        if (told.facts.instance.isEmpty())
            told.facts.instance = told.facts.className;
    }
    return windows;
}

void PlasmaWindows::setState(std::int64_t window, std::uint32_t flag, bool isSet) {
    if (const auto found = windows_.find(window); found != windows_.end())
        org_kde_plasma_window_set_state(found->second->object.get(), flag, isSet ? flag : 0);
}

void PlasmaWindows::setMinimized(std::int64_t window, bool isMinimized) {
    setState(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED, isMinimized);
}

void PlasmaWindows::activate(std::int64_t window) {
    setState(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE, true);
}

}  // namespace kestrelbay::wayland
