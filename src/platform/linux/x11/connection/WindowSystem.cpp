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

WindowSystem::StateQuestion WindowSystem::askState(const WindowAddress &window) const {
    const auto ask = [this](xcb_window_t of, WindowAtoms::Name property, xcb_atom_t type,
                            std::uint32_t units = 1) {
        return connection_.askProperty(of, atoms_[property], type, units);
    };
    return {.abilities = window.abilities,
            .icccm = ask(window.window, "WM_STATE", atoms_["WM_STATE"]),
            .ewmh = ask(window.window, "_NET_WM_STATE", XCB_ATOM_ATOM, kLongestStateList),
            .workspace = ask(window.window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL),
            .workspaceInView = ask(window.root, "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL)};
}

WindowState WindowSystem::takeState(const StateQuestion &question) const {
    const PropertyReply icccm = connection_.takeProperty(question.icccm);
    const PropertyReply ewmh = connection_.takeProperty(question.ewmh);
    const auto workspace = propertyWord(connection_.takeProperty(question.workspace));
    const auto inView = propertyWord(connection_.takeProperty(question.workspaceInView));
    WindowState answer;
    if (!icccm || !ewmh)
        return answer;
    if (workspace && inView && workspace != inView && workspace != kAllWorkspaces)
        answer.otherWorkspace = workspace;
    const auto list = propertyWords(ewmh);
    const auto state = propertyWord(icccm);
    answer.exists = true;
    answer.managed = state && state != kWithdrawnState;
    answer.skipsTaskbar = contains(list, atoms_["_NET_WM_STATE_SKIP_TASKBAR"]);
    answer.wantsAttention = contains(list, atoms_["_NET_WM_STATE_DEMANDS_ATTENTION"]);
    answer.minimized = question.abilities.marksHiddenWindows
                           ? contains(list, atoms_["_NET_WM_STATE_HIDDEN"])
                           : state == kIconicState;
    return answer;
}

void WindowSystem::discardStates(std::span<const StateQuestion> questions) const {
    for (const StateQuestion &question : questions)
        for (const auto &cookie :
             {question.icccm, question.ewmh, question.workspace, question.workspaceInView})
            xcb_discard_reply(connection_.get(), cookie.sequence);
}

std::vector<WindowState> WindowSystem::readStates(std::span<const WindowAddress> windows) const {
    std::vector<WindowState> states(windows.size());
    if (!connection_.isUsable())
        return states;
    std::vector<StateQuestion> questions;
    questions.reserve(windows.size());
    for (const WindowAddress &window : windows)
        questions.push_back(askState(window));
    std::ranges::transform(questions, states.begin(),
                           [this](const StateQuestion &question) { return takeState(question); });
    return states;
}

bool WindowSystem::isState(xcb_atom_t property) const {
    return atoms_.isOneOf(property, {"WM_STATE", "_NET_WM_STATE", "_NET_WM_DESKTOP"});
}

bool WindowSystem::isStateOfAll(xcb_atom_t property) const {
    return atoms_.isOneOf(property, {"_NET_CURRENT_DESKTOP", "_NET_SUPPORTED"});
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
