#include "platform/linux/x11/windows/OpenedFile.h"

#include <algorithm>
#include <span>
#include <utility>

namespace kestrelbay::x11 {

namespace {

// In units of four bytes. What differs beyond that is not seen.
constexpr std::uint32_t kLongestTitle = 256;
constexpr std::uint32_t kLongestStateList = 64;
/// The flag of ICCCM's WM_HINTS, which are in its first word.
constexpr std::uint32_t kUrgencyHint = 1U << 8U;

QByteArray bytesOf(const PropertyReply &reply) {
    return reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

/// Of every window, in order, in one round trip.
std::vector<WindowLook> readLooks(const WindowSystem &system,
                                  std::span<const WindowAddress> windows) {
    const XConnection &connection = system.connection();
    const WindowAtoms &atoms = system.atoms();
    struct Cookies {
        xcb_get_property_cookie_t title, plainTitle, states, hints;
    };
    std::vector<Cookies> cookies;
    for (const WindowAddress &at : windows)
        cookies.push_back(
            {connection.askProperty(at.window, atoms["_NET_WM_NAME"], XCB_ATOM_ANY, kLongestTitle),
             connection.askProperty(at.window, XCB_ATOM_WM_NAME, XCB_ATOM_ANY, kLongestTitle),
             connection.askProperty(at.window, atoms["_NET_WM_STATE"], XCB_ATOM_ATOM,
                                    kLongestStateList),
             connection.askProperty(at.window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 1)});
    std::vector<WindowLook> looks;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const QByteArray title = bytesOf(connection.takeProperty(cookies[i].title));
        const QByteArray plainTitle = bytesOf(connection.takeProperty(cookies[i].plainTitle));
        const PropertyReply states = connection.takeProperty(cookies[i].states);
        const auto hints = propertyWord(connection.takeProperty(cookies[i].hints));
        const auto list = propertyWords(states);
        const bool demandsAttention =
            std::ranges::find(list, atoms["_NET_WM_STATE_DEMANDS_ATTENTION"]) != list.end();
        looks.push_back(
            {.window = windows[i].window,
             .title = title.isEmpty() ? plainTitle : title,
             .wantsAttention = demandsAttention || (hints.value_or(0) & kUrgencyHint) != 0});
    }
    return looks;
}

xcb_window_t activeIn(const DesktopPicture &picture) {
    const auto active = std::ranges::find(picture.windows, true, &ManagedWindow::active);
    return active == picture.windows.end() ? xcb_window_t{XCB_NONE} : active->address.window;
}

}  // namespace

OpenedFile::OpenedFile(std::shared_ptr<WindowTracker> tracker, QString entryPath,
                       const DesktopPicture &before)
    : tracker_(std::move(tracker)), entryPath_(std::move(entryPath)), before_(lookAt(before)) {}

std::optional<ApplicationWindows> OpenedFile::windowsIn(const DesktopPicture &picture) const {
    for (const ApplicationGroup &group : groupApplications(picture))
        if (group.entry && picture.index->entries()[*group.entry].path == entryPath_)
            return std::optional<ApplicationWindows>(std::in_place, tracker_, picture, group);
    return std::nullopt;
}

ApplicationLook OpenedFile::lookAt(const DesktopPicture &picture) const {
    ApplicationLook look;
    if (const auto windows = windowsIn(picture))
        look.windows = readLooks(tracker_->windowSystem(), windows->addresses());
    look.active = activeIn(picture);
    return look;
}

bool OpenedFile::bringForward(const DesktopPicture &now, bool isLastResort) {
    ApplicationLook look = lookAt(now);
    const std::optional<std::int64_t> changed = changedWindow(before_, look);
    // Asked last, or a user who goes elsewhere just now might be called back.
    const DesktopPicture latest = tracker_->read(now.index);
    look.active = activeIn(latest);
    if (isElsewhere(before_, look))
        return true;
    if (!changed && !isLastResort)
        return false;
    std::optional<ApplicationWindows> windows = windowsIn(latest);
    if (!windows)
        return true;
    const std::vector<std::size_t> list = windows->listed();
    const auto addresses = windows->addresses();
    const auto position = [&](xcb_window_t window) {
        return static_cast<std::size_t>(
            std::ranges::find(addresses, window, &WindowAddress::window) - addresses.begin());
    };
    if (!changed && list.empty())
        return true;
    const std::size_t window =
        changed ? position(static_cast<xcb_window_t>(*changed)) : list.front();
    const std::optional<WindowState> state = windows->state(window);
    if (!state)
        return true;
    if (addresses[window].window == look.active && !state->minimized && !state->otherWorkspace)
        return true;
    if (state->minimized)
        windows->setMinimized(window, false);
    windows->setMain(window);
    windows->activate();
    return true;
}

}  // namespace kestrelbay::x11
