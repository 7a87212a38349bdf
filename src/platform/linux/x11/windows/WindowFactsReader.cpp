#include "platform/linux/x11/windows/WindowFactsReader.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include <QSysInfo>

#include <xcb/res.h>

#include "platform/linux/applications/matching/ProcessFacts.h"

namespace kestrelbay::x11 {

namespace {

// In units of four bytes: longer than any real value, and short enough that no
// client can make us carry megabytes.
constexpr std::uint32_t kLongestText = 256;
constexpr std::uint32_t kLongestList = 64;

using PidsByClient = std::unordered_map<std::uint32_t, std::int64_t>;

PidsByClient readPids(xcb_connection_t *connection, const std::set<std::uint32_t> &clients) {
    std::vector<xcb_res_client_id_spec_t> specs;
    specs.reserve(clients.size());
    for (const std::uint32_t client : clients)
        specs.push_back({client, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
    const Reply<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        connection,
        xcb_res_query_client_ids(connection, static_cast<std::uint32_t>(specs.size()),
                                 specs.data()),
        nullptr));
    PidsByClient pids;
    if (!reply)
        return pids;
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id))
        if ((id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(id.data) > 0)
            pids[id.data->spec.client] = *xcb_res_client_id_value_value(id.data);
    return pids;
}

bool isThisMachine(const QString &name) {
    return name.section(u'.', 0, 0)
               .compare(QSysInfo::machineHostName().section(u'.', 0, 0), Qt::CaseInsensitive) == 0;
}

}  // namespace

struct WindowFactsReader::Cookies {
    xcb_get_property_cookie_t gtkId, kdeFile, wmClass, role, transientFor, types, pid, machine;
};

WindowFactsReader::WindowFactsReader(const WindowSystem &system, AddLaunch addLaunch)
    : connection_(system.connection()), atoms_(system.atoms()), addLaunch_(std::move(addLaunch)) {
    if (!connection_.isUsable())
        return;
    const xcb_query_extension_reply_t *extension =
        xcb_get_extension_data(connection_.get(), &xcb_res_id);
    if (extension == nullptr || extension->present == 0)
        return;
    const Reply<xcb_res_query_version_reply_t> version(xcb_res_query_version_reply(
        connection_.get(), xcb_res_query_version(connection_.get(), 1, 2), nullptr));
    serverKnowsPids_ = version && std::pair(version->server_major, version->server_minor) >=
                                      std::pair<std::uint16_t, std::uint16_t>(1, 2);
}

bool WindowFactsReader::isIdentity(xcb_atom_t property) const {
    return property == XCB_ATOM_WM_CLASS || property == XCB_ATOM_WM_TRANSIENT_FOR ||
           atoms_.isOneOf(property,
                          {"_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE", "_NET_WM_WINDOW_TYPE",
                           "_NET_WM_PID", "WM_CLIENT_MACHINE", "WM_WINDOW_ROLE"});
}

WindowFactsReader::Cookies WindowFactsReader::request(xcb_window_t window) const {
    connection_.selectEvents(window,
                             XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    const auto get = [&](xcb_atom_t property, xcb_atom_t type, std::uint32_t units) {
        return connection_.askProperty(window, property, type, units);
    };
    return {.gtkId = get(atoms_["_GTK_APPLICATION_ID"], XCB_ATOM_ANY, kLongestText),
            .kdeFile = get(atoms_["_KDE_NET_WM_DESKTOP_FILE"], XCB_ATOM_ANY, kLongestText),
            .wmClass = get(XCB_ATOM_WM_CLASS, XCB_ATOM_ANY, kLongestText),
            .role = get(atoms_["WM_WINDOW_ROLE"], XCB_ATOM_ANY, kLongestText),
            .transientFor = get(XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 1),
            .types = get(atoms_["_NET_WM_WINDOW_TYPE"], XCB_ATOM_ATOM, kLongestList),
            .pid = get(atoms_["_NET_WM_PID"], XCB_ATOM_CARDINAL, 1),
            .machine = get(atoms_["WM_CLIENT_MACHINE"], XCB_ATOM_ANY, kLongestText)};
}

WindowType WindowFactsReader::typeOf(std::span<const std::uint32_t> types, bool transient) const {
    // The client's first choice that we know; types of single desktops are skipped.
    for (const std::uint32_t type : types) {
        if (type == atoms_["_NET_WM_WINDOW_TYPE_NORMAL"])
            return WindowType::Normal;
        if (type == atoms_["_NET_WM_WINDOW_TYPE_DIALOG"])
            return WindowType::Dialog;
        if (atoms_.isOneOf(type, {"_NET_WM_WINDOW_TYPE_UTILITY", "_NET_WM_WINDOW_TYPE_TOOLBAR",
                                  "_NET_WM_WINDOW_TYPE_MENU"}))
            return WindowType::Utility;
        if (atoms_.isOneOf(type, {"_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_DOCK",
                                  "_NET_WM_WINDOW_TYPE_SPLASH", "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
                                  "_NET_WM_WINDOW_TYPE_POPUP_MENU", "_NET_WM_WINDOW_TYPE_TOOLTIP",
                                  "_NET_WM_WINDOW_TYPE_NOTIFICATION", "_NET_WM_WINDOW_TYPE_COMBO",
                                  "_NET_WM_WINDOW_TYPE_DND"}))
            return WindowType::Decoration;
    }
    return transient ? WindowType::Dialog : WindowType::Normal;
}

std::optional<WindowFacts> WindowFactsReader::collect(const Cookies &cookies,
                                                      std::int64_t serverPid,
                                                      Processes &processes) const {
    const auto take = [this](xcb_get_property_cookie_t cookie) {
        return connection_.takeProperty(cookie);
    };
    // Every cookie is asked for, or its answer would stay in memory.
    const PropertyReply gtkId = take(cookies.gtkId);
    const PropertyReply kdeFile = take(cookies.kdeFile);
    const PropertyReply wmClass = take(cookies.wmClass);
    const PropertyReply role = take(cookies.role);
    const auto owner = propertyWord(take(cookies.transientFor));
    const PropertyReply types = take(cookies.types);
    const auto claimedPid = propertyWord(take(cookies.pid));
    const PropertyReply machine = take(cookies.machine);
    if (!gtkId || !machine)
        return std::nullopt;

    WindowFacts facts;
    facts.gtkApplicationId = propertyText(gtkId);
    facts.kdeDesktopFile = propertyText(kdeFile);
    const QStringList names = propertyTexts(wmClass);
    facts.instance = names.value(0);
    facts.className = names.value(1);
    facts.role = propertyText(role);
    if (owner) {
        const std::vector<xcb_window_t> &roots = connection_.roots();
        facts.transientForGroup =
            *owner == XCB_NONE || std::find(roots.begin(), roots.end(), *owner) != roots.end();
        facts.transientFor = facts.transientForGroup ? XCB_NONE : *owner;
    }
    facts.type = typeOf(propertyWords(types), facts.isTransient());

    const QString host = propertyText(machine);
    facts.pid = serverPid;
    if (facts.pid < 1 && claimedPid && isThisMachine(host))
        facts.pid = *claimedPid;
    facts.process = processOf(facts.pid, processes);
    if (!host.isEmpty() && !isThisMachine(host) &&
        facts.process.executableNames.contains(QStringLiteral("ssh"))) {
        // The window of another machine, and only its tunnel is a process here.
        facts.pid = 0;
        facts.process = {};
    }
    return facts;
}

ProcessFacts WindowFactsReader::processOf(std::int64_t pid, Processes &processes) const {
    const auto [at, isNew] = processes.try_emplace(pid);
    if (isNew) {
        at->second = readProcessFacts(pid);
        if (addLaunch_ && pid > 0)
            addLaunch_(pid, at->second);
    }
    return at->second;
}

std::vector<std::optional<WindowFacts>> WindowFactsReader::read(
    std::span<const xcb_window_t> windows) const {
    std::vector<Cookies> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows)
        cookies.push_back(request(window));

    // Resource ids begin with the bits that are the client's own.
    const std::uint32_t clientBits =
        connection_.isUsable() ? ~xcb_get_setup(connection_.get())->resource_id_mask : 0;
    std::set<std::uint32_t> clients;
    for (const xcb_window_t window : windows)
        clients.insert(window & clientBits);
    const PidsByClient pids =
        serverKnowsPids_ ? readPids(connection_.get(), clients) : PidsByClient();

    Processes processes;
    std::vector<std::optional<WindowFacts>> all;
    all.reserve(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto pid = pids.find(windows[i] & clientBits);
        all.push_back(collect(cookies[i], pid == pids.end() ? 0 : pid->second, processes));
    }
    return all;
}

}  // namespace kestrelbay::x11
