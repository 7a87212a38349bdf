#include "platform/linux/x11/connection/WindowSystem.h"

#include <algorithm>

namespace kestrelbay::x11 {

namespace {

/// "From the user", in the words of EWMH: pagers and their like.
constexpr std::uint32_t kSourceUser = 2;
// ICCCM's values of WM_STATE.
constexpr std::uint32_t kWithdrawnState = 0;
constexpr std::uint32_t kIconicState = 3;
constexpr std::uint32_t kLongestStateList = 64;
/// What a window manager supports is some hundred words at most.
constexpr std::uint32_t kMostAbilities = 1024;
/// On every workspace, in the words of EWMH.
constexpr std::uint32_t kAllWorkspaces = 0xFFFFFFFF;

bool contains(std::span<const std::uint32_t> list, xcb_atom_t atom) {
    return std::find(list.begin(), list.end(), atom) != list.end();
}

}  // namespace

WindowSystem::WindowSystem(const QString &displayName)
    : connection_(displayName), atoms_(connection_) {
    if (!connection_.isUsable())
        return;
    clockWindow_ = connection_.createInputOnlyWindow();
    connection_.selectEvents(clockWindow_, XCB_EVENT_MASK_PROPERTY_CHANGE);
}

void WindowSystem::askTime() const {
    // Adding nothing to a property changes nothing, but is told with the time.
    xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, clockWindow_,
                        atoms_["_KESTRELBAY_SERVER_TIME"], XCB_ATOM_CARDINAL, 32, 0, nullptr);
}

std::vector<WindowState> WindowSystem::readStates(std::span<const WindowAddress> windows) const {
    std::vector<WindowState> states(windows.size());
    if (!connection_.isUsable())
        return states;
    struct Cookies {
        xcb_get_property_cookie_t icccm, ewmh, workspace, workspaceInView;
    };
    std::vector<Cookies> cookies;
    cookies.reserve(windows.size());
    const auto ask = [this](xcb_window_t window, WindowAtoms::Name property, xcb_atom_t type,
                            std::uint32_t units = 1) {
        return connection_.askProperty(window, atoms_[property], type, units);
    };
    for (const WindowAddress &at : windows)
        cookies.push_back({ask(at.window, "WM_STATE", atoms_["WM_STATE"]),
                           ask(at.window, "_NET_WM_STATE", XCB_ATOM_ATOM, kLongestStateList),
                           ask(at.window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL),
                           ask(at.root, "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL)});
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const PropertyReply icccm = connection_.takeProperty(cookies[i].icccm);
        const PropertyReply ewmh = connection_.takeProperty(cookies[i].ewmh);
        const auto workspace = propertyWord(connection_.takeProperty(cookies[i].workspace));
        const auto inView = propertyWord(connection_.takeProperty(cookies[i].workspaceInView));
        if (!icccm || !ewmh)
            continue;
        if (workspace && inView && workspace != inView && workspace != kAllWorkspaces)
            states[i].otherWorkspace = workspace;
        const auto list = propertyWords(ewmh);
        const auto state = propertyWord(icccm);
        states[i].exists = true;
        states[i].managed = state && state != kWithdrawnState;
        states[i].skipsTaskbar = contains(list, atoms_["_NET_WM_STATE_SKIP_TASKBAR"]);
        states[i].minimized = windows[i].abilities.marksHiddenWindows
                                  ? contains(list, atoms_["_NET_WM_STATE_HIDDEN"])
                                  : state == kIconicState;
    }
    return states;
}

bool WindowSystem::tellWindowManager(xcb_window_t root, xcb_window_t about,
                                     WindowAtoms::Name message,
                                     std::initializer_list<std::uint32_t> words) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = about;
    event.type = atoms_[message];
    std::ranges::copy(words, event.data.data32);
    xcb_send_event(connection_.get(), 0, root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&event));
    return flush();
}

bool WindowSystem::flush() const {
    return connection_.isUsable() && xcb_flush(connection_.get()) > 0;
}

bool WindowSystem::activate(const WindowAddress &window, xcb_timestamp_t time) const {
    return tellWindowManager(window.root, window.window, "_NET_ACTIVE_WINDOW", {kSourceUser, time});
}

bool WindowSystem::showWorkspace(const WindowAddress &window, std::uint32_t workspace,
                                 xcb_timestamp_t time) const {
    return tellWindowManager(window.root, window.root, "_NET_CURRENT_DESKTOP", {workspace, time});
}

bool WindowSystem::minimize(const WindowAddress &window) const {
    return tellWindowManager(window.root, window.window, "WM_CHANGE_STATE", {kIconicState});
}

bool WindowSystem::restore(std::span<const WindowAddress> windows, xcb_timestamp_t time) const {
    xcb_connection_t *c = connection_.get();
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const WindowAddress &at : windows)
        cookies.push_back(xcb_get_window_attributes(c, at.window));
    std::vector<bool> mapped;
    for (const xcb_get_window_attributes_cookie_t cookie : cookies) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(c, cookie, nullptr));
        mapped.push_back(attributes && attributes->map_state != XCB_MAP_STATE_UNMAPPED);
    }
    // To map what is mapped does nothing, and no window manager hears of it. Some leave
    // minimised windows mapped, and each for a moment after it has marked them.
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (mapped[i])
            activate(windows[i], time);
        else
            // The window manager gets it as a request, since it redirects its windows.
            xcb_map_window(c, windows[i].window);
    return flush();
}

bool WindowSystem::askFrameExtents(xcb_window_t window) const {
    const PropertyReply supported = connection_.readProperty(
        connection_.root(), atoms_["_NET_SUPPORTED"], XCB_ATOM_ATOM, kMostAbilities);
    return contains(propertyWords(supported), atoms_["_NET_REQUEST_FRAME_EXTENTS"]) &&
           tellWindowManager(connection_.root(), window, "_NET_REQUEST_FRAME_EXTENTS", {});
}

bool WindowSystem::raise(const WindowAddress &window) const {
    if (window.abilities.restacksWindows)
        return tellWindowManager(window.root, window.window, "_NET_RESTACK_WINDOW",
                                 {kSourceUser, XCB_NONE, XCB_STACK_MODE_ABOVE});
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection_.get(), window.window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    return flush();
}

}  // namespace kestrelbay::x11
