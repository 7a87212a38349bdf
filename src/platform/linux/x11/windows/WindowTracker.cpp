#include "platform/linux/x11/windows/WindowTracker.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace kestrelbay::x11 {

namespace {

// In units of four bytes, that is windows or atoms. More windows than this are
// nobody's desktop, but somebody's mistake.
constexpr std::uint32_t kMostWindows = 4096;
constexpr std::uint32_t kMostAbilities = 1024;
/// Dialogs of dialogs of dialogs; and some name each other.
constexpr std::size_t kLongestTransientChain = 8;

}  // namespace

struct WindowTracker::Root {
    xcb_window_t root = XCB_NONE;
    /// Front-most first, as the window manager has it, later as they were used.
    std::vector<xcb_window_t> windows;
    xcb_window_t active = XCB_NONE;
    /// The number of the request that told of it.
    std::uint32_t request = 0;
    /// The window by which the window manager shows that it is there.
    xcb_window_t check = XCB_NONE;
    /// That is one of a living client for certain.
    bool isAlive = false;
    WindowManagerAbilities abilities;
};

WindowTracker::WindowTracker(const QString &displayName, WindowFactsReader::AddLaunch addLaunch)
    : system_(displayName), reader_(system_, std::move(addLaunch)) {
    const XConnection &connection = system_.connection();
    if (!connection.isUsable())
        return;
    const std::string selection = "WM_S" + std::to_string(connection.defaultScreen());
    managerSelection_ = internAtoms(connection, std::array<std::string_view, 1>{selection})[0];
    for (const xcb_window_t root : connection.roots())
        connection.selectEvents(root, XCB_EVENT_MASK_PROPERTY_CHANGE);
    system_.flush();
}

void WindowTracker::setListener(Listener listener) {
    const std::lock_guard lock(listenerMutex_);
    listener_ = std::move(listener);
}

void WindowTracker::tell(std::function<void()> Listener::*what) {
    const std::lock_guard lock(listenerMutex_);
    if (const auto &listener = listener_.*what)
        listener();
}

void WindowTracker::process(xcb_generic_event_t *pollForFirst(xcb_connection_t *)) {
    bool isNews = false;
    {
        const std::lock_guard lock(mutex_);
        if (const Reply<xcb_generic_event_t> first{pollForFirst(system_.connection().get())})
            apply(*first);
        takeQueuedEvents();
        isNews = std::exchange(isNews_, false);
    }
    if (isNews)
        tell(&Listener::news);
}

void WindowTracker::takeQueuedEvents() {
    while (const Reply<xcb_generic_event_t> event{
        xcb_poll_for_queued_event(system_.connection().get())})
        apply(*event);
}

void WindowTracker::apply(const xcb_generic_event_t &event) {
    switch (event.response_type & 0x7f) {
        case XCB_PROPERTY_NOTIFY: {
            const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
            time_ = change.time;
            if (change.atom == system_.atoms()["_NET_ACTIVE_WINDOW"])
                focusOrder_.activeWindowSet(change.window, event.full_sequence);
            isNews_ |=
                system_.atoms().isOneOf(change.atom, {"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST",
                                                      "_NET_SUPPORTING_WM_CHECK"}) ||
                (reader_.isIdentity(change.atom) && records_.erase(change.window) > 0);
            break;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto &end = reinterpret_cast<const xcb_destroy_notify_event_t &>(event);
            records_.erase(end.window);
            verified_.erase(end.window);
            break;
        }
        default:
            break;
    }
}

void WindowTracker::expectActive(xcb_window_t root, std::span<const xcb_window_t> windows) {
    const std::lock_guard lock(mutex_);
    usedByRoot_[root].order.expect(windows);
}

bool WindowTracker::giveFocus(const WindowAddress &window, xcb_timestamp_t time,
                              FocusOrder::Others others) {
    std::vector<xcb_window_t> expected = others.onTheWay;
    expected.push_back(window.window);
    expectActive(window.root, expected);
    const bool isSent = focusOrder_.give(window, std::move(others), [&](const WindowAddress &at) {
        return system_.activate(at, time);
    });
    tell(&Listener::focusAsked);
    return isSent;
}

bool WindowTracker::repeatUnheardFocus(xcb_timestamp_t time) {
    return focusOrder_.repeatUnheard(
        [&](const WindowAddress &window) { return system_.activate(window, time); });
}

xcb_timestamp_t WindowTracker::serverTime() {
    if (!system_.connection().isUsable())
        return XCB_CURRENT_TIME;
    system_.askTime();
    synchronize(system_.connection().get());
    processQueuedEvents();
    const std::lock_guard lock(mutex_);
    return time_;
}

std::vector<WindowTracker::Root> WindowTracker::readRoots() const {
    const XConnection &connection = system_.connection();
    const WindowAtoms &atoms = system_.atoms();
    struct Cookies {
        xcb_get_property_cookie_t stacking, clients, active, check, supported;
    };
    std::vector<Cookies> cookies;
    for (const xcb_window_t root : connection.roots()) {
        const auto ask = [&](WindowAtoms::Name property, xcb_atom_t type, std::uint32_t units) {
            return connection.askProperty(root, atoms[property], type, units);
        };
        cookies.push_back(
            {.stacking = ask("_NET_CLIENT_LIST_STACKING", XCB_ATOM_WINDOW, kMostWindows),
             .clients = ask("_NET_CLIENT_LIST", XCB_ATOM_WINDOW, kMostWindows),
             .active = ask("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, 1),
             .check = ask("_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, 1),
             .supported = ask("_NET_SUPPORTED", XCB_ATOM_ATOM, kMostAbilities)});
    }

    std::vector<Root> roots(cookies.size());
    for (std::size_t i = 0; i < roots.size(); ++i) {
        const PropertyReply stacking = connection.takeProperty(cookies[i].stacking);
        const PropertyReply clients = connection.takeProperty(cookies[i].clients);
        const auto active = propertyWord(connection.takeProperty(cookies[i].active));
        const auto check = propertyWord(connection.takeProperty(cookies[i].check));
        const PropertyReply supported = connection.takeProperty(cookies[i].supported);

        Root &root = roots[i];
        root.root = connection.roots()[i];
        // Small window managers keep no list in stacking order: the newest in front
        // is the best guess then.
        const auto list = propertyWords(propertyWords(stacking).empty() ? clients : stacking);
        std::unordered_set<xcb_window_t> seen;
        for (auto window = list.rbegin(); window != list.rend(); ++window)
            if (*window != XCB_NONE && seen.insert(*window).second)
                root.windows.push_back(*window);
        root.active = active.value_or(XCB_NONE);
        root.request = cookies[i].active.sequence;
        root.check = check.value_or(XCB_NONE);
        // When mutter takes over from mutter, the earlier one deletes the later one's
        // announcement, which still owns the window managers' selection.
        if (root.check == XCB_NONE && root.root == connection.root()) {
            root.check = connection.ownerOf(managerSelection_);
            root.isAlive = root.check != XCB_NONE;
        }
        for (const xcb_atom_t ability : propertyWords(supported)) {
            root.abilities.restacksWindows |= ability == atoms["_NET_RESTACK_WINDOW"];
            root.abilities.marksHiddenWindows |= ability == atoms["_NET_WM_STATE_HIDDEN"];
        }
    }
    return roots;
}

void WindowTracker::verifyWindowManagers(std::span<Root *const> unverified) {
    const XConnection &connection = system_.connection();
    std::vector<xcb_get_property_cookie_t> cookies;
    for (const Root *root : unverified) {
        connection.selectEvents(root->check, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        cookies.push_back(connection.askProperty(
            root->check, system_.atoms()["_NET_SUPPORTING_WM_CHECK"], XCB_ATOM_WINDOW, 1));
    }
    // A window manager that has gone leaves its lists behind.
    for (std::size_t i = 0; i < unverified.size(); ++i)
        if (propertyWord(connection.takeProperty(cookies[i])) != unverified[i]->check)
            unverified[i]->check = XCB_NONE;
    const std::lock_guard lock(mutex_);
    takeQueuedEvents();
    for (const Root *root : unverified)
        if (const auto kept = verified_.find(root->check); kept != verified_.end())
            kept->second = true;
}

WindowTracker::Known WindowTracker::collect(std::span<const xcb_window_t> windows,
                                            std::vector<Root> &roots) {
    Known known;
    std::vector<xcb_window_t> unknown;
    std::vector<Root *> unverified;
    std::uint64_t reading = 0;
    {
        const std::lock_guard lock(mutex_);
        takeQueuedEvents();
        // What these were about is looked at right here.
        isNews_ = false;
        for (Root &root : roots)
            if (root.check != XCB_NONE && !root.isAlive && !verified_[root.check])
                unverified.push_back(&root);
        reading = ++readings_;
        for (const xcb_window_t window : windows) {
            Record &record = records_[window];
            if (record.facts) {
                known.emplace(window, record);
            } else {
                record.reading = reading;
                unknown.push_back(window);
            }
        }
    }
    if (unknown.empty() && unverified.empty())
        return known;

    std::vector<std::optional<WindowFacts>> facts;
    if (!unknown.empty())
        facts = reader_.read(unknown);
    if (!unverified.empty())
        verifyWindowManagers(unverified);

    const std::lock_guard lock(mutex_);
    takeQueuedEvents();
    for (std::size_t i = 0; i < facts.size(); ++i) {
        // Changed, destroyed or read by somebody else in the meantime? Then what
        // we have is good for this once.
        const auto record = records_.find(unknown[i]);
        const bool ours =
            record != records_.end() && record->second.reading == reading && !record->second.facts;
        if (!facts[i]) {
            if (ours)
                records_.erase(record);
            continue;
        }
        Record fresh{.facts = std::make_shared<const WindowFacts>(*std::move(facts[i])),
                     .matches = {},
                     .index = {},
                     .reading = reading};
        if (ours)
            record->second = fresh;
        known.emplace(unknown[i], std::move(fresh));
    }
    return known;
}

void WindowTracker::putInOrderOfUse(Root &root, const Known &known) {
    // Whoever uses a dialog uses the window that it belongs to.
    std::vector<xcb_window_t> active;
    for (auto at = known.find(root.active);
         at != known.end() && active.size() < kLongestTransientChain;
         at = known.find(at->second.facts->transientFor))
        active.push_back(at->first);
    const std::lock_guard lock(mutex_);
    Used &used = usedByRoot_[root.root];
    // Another thread's answer may have been the newer one; the numbers begin anew some day.
    if (static_cast<std::int32_t>(root.request - used.request) > 0) {
        used.order.update(root.windows, active);
        used.request = root.request;
    }
    root.windows = used.order.windows();
}

DesktopPicture WindowTracker::read(std::shared_ptr<const ApplicationIndex> index) {
    DesktopPicture picture;
    picture.index = std::move(index);
    if (!system_.connection().isUsable())
        return picture;

    system_.askTime();
    std::vector<Root> roots = readRoots();

    std::vector<xcb_window_t> wanted;
    for (Root &root : roots) {
        if (root.check == XCB_NONE)
            continue;
        // Some window managers name an active window that is not in their list.
        if (root.active != XCB_NONE &&
            std::find(root.windows.begin(), root.windows.end(), root.active) == root.windows.end())
            root.windows.insert(root.windows.begin(), root.active);
        wanted.insert(wanted.end(), root.windows.begin(), root.windows.end());
    }
    Known known = collect(wanted, roots);

    const auto at = [&](xcb_window_t window) {
        const auto record = known.find(window);
        return record == known.end() ? nullptr : &record->second;
    };
    for (auto &[window, record] : known) {
        if (record.index == picture.index)
            continue;
        record.matches = std::make_shared<const std::vector<ApplicationMatch>>(
            matchWindow(*record.facts, *picture.index));
        record.index = picture.index;
    }
    for (Root &root : roots) {
        if (root.check == XCB_NONE)
            continue;
        focusOrder_.activeWindowRead(root.root, root.active, root.request);
        putInOrderOfUse(root, known);
        for (const xcb_window_t window : root.windows) {
            const Record *record = at(window);
            if (record == nullptr)
                continue;
            // A dialog that tells nothing of itself is its owner's.
            const Record *named = record;
            for (std::size_t step = 0;
                 named != nullptr && named->matches->empty() && step < kLongestTransientChain;
                 ++step)
                named = at(named->facts->transientFor);
            picture.windows.push_back({.address = {window, root.root, root.abilities},
                                       .facts = record->facts,
                                       .matches = named ? named->matches : record->matches,
                                       .active = window == root.active});
        }
    }

    {
        const std::lock_guard lock(mutex_);
        picture.serverTime = time_;
        for (const auto &[window, record] : known)
            if (const auto kept = records_.find(window);
                kept != records_.end() && kept->second.facts == record.facts)
                kept->second = record;
    }
    processQueuedEvents();
    return picture;
}

}  // namespace kestrelbay::x11
