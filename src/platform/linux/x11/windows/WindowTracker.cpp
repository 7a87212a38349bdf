#include "platform/linux/x11/windows/WindowTracker.h"

#include <algorithm>
#include <utility>

namespace kestrelbay::x11 {

namespace {

/// Dialogs of dialogs of dialogs; and some name each other.
constexpr std::size_t kLongestTransientChain = 8;
/// Longer than it takes to wake a thread on a busy machine.
constexpr std::chrono::milliseconds kSameMoment{50};

}  // namespace

WindowTracker::WindowTracker(const QString &displayName, WindowFactsReader::AddLaunch addLaunch)
    : system_(displayName), rootReader_(system_), reader_(system_, std::move(addLaunch)) {
    const XConnection &connection = system_.connection();
    if (!connection.isUsable())
        return;
    for (const xcb_window_t root : connection.roots())
        connection.selectEvents(root, XCB_EVENT_MASK_PROPERTY_CHANGE);
    system_.flush();
}

void WindowTracker::setFocusAsked(std::function<void()> focusAsked) {
    const std::lock_guard lock(focusAskedMutex_);
    focusAsked_ = std::move(focusAsked);
}

std::size_t WindowTracker::processEvents() {
    const std::lock_guard lock(mutex_);
    return takeEvents();
}

std::size_t WindowTracker::takeEvents() {
    const Reply<xcb_generic_event_t> first{xcb_poll_for_event(system_.connection().get())};
    if (!first)
        return 0;
    apply(*first);
    return 1 + takeQueuedEvents();
}

std::size_t WindowTracker::takeQueuedEvents() {
    std::size_t events = 0;
    while (const Reply<xcb_generic_event_t> event{
        xcb_poll_for_queued_event(system_.connection().get())}) {
        apply(*event);
        ++events;
    }
    return events;
}

void WindowTracker::apply(const xcb_generic_event_t &event) {
    switch (event.response_type & 0x7f) {
        case XCB_PROPERTY_NOTIFY: {
            const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
            time_ = change.time;
            if (change.atom == system_.atoms()["_NET_ACTIVE_WINDOW"])
                focusOrder_.activeWindowSet(change.window, event.full_sequence);
            if (rootReader_.reads(change.atom)) {
                ++rootChanges_;
                knownRoots_.reset();
                if (rootReader_.tellsOfManager(change.atom)) {
                    knownManagers_.reset();
                    states_.forgetAll();
                }
            }
            if (reader_.isIdentity(change.atom))
                records_.erase(change.window);
            if (system_.isState(change.atom))
                states_.windowChanged(change.window);
            if (system_.isStateOfAll(change.atom))
                states_.allChanged();
            break;
        }
        case XCB_DESTROY_NOTIFY: {
            const auto &end = reinterpret_cast<const xcb_destroy_notify_event_t &>(event);
            records_.erase(end.window);
            states_.windowGone(end.window);
            verified_.erase(end.window);
            break;
        }
        default:
            break;
    }
}

void WindowTracker::expectActive(std::span<const WindowAddress> windows) {
    std::vector<xcb_window_t> expected(windows.size());
    std::ranges::transform(windows, expected.begin(), &WindowAddress::window);
    const std::lock_guard lock(mutex_);
    usedByRoot_[windows.back().root].order.expect(expected);
}

bool WindowTracker::giveFocus(const WindowAddress &window, xcb_timestamp_t time,
                              FocusOrder::Others others) {
    std::vector<WindowAddress> expected = others.onTheWay;
    expected.push_back(window);
    expectActive(expected);
    const bool isSent = focusOrder_.give(window, std::move(others), [&](const WindowAddress &at) {
        return system_.activate(at, time);
    });
    const std::lock_guard lock(focusAskedMutex_);
    if (focusAsked_)
        focusAsked_();
    return isSent;
}

bool WindowTracker::repeatUnheardFocus(xcb_timestamp_t time) {
    if (const auto window = focusOrder_.perhapsRefused();
        window && readStates(std::span(&*window, 1)).front().wantsAttention)
        focusOrder_.noteRefusal(*window);
    const auto ask = [&](const WindowAddress &window) { return system_.activate(window, time); };
    if (restoreLeftBehind(time))
        return focusOrder_.repeat(ask);
    return focusOrder_.repeatUnheard(ask);
}

bool WindowTracker::restoreLeftBehind(xcb_timestamp_t time) {
    const std::vector<WindowAddress> windows = focusOrder_.onTheWay();
    const std::vector<WindowState> states = readStates(windows);
    std::vector<WindowAddress> left;
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (states[i].minimized)
            left.push_back(windows[i]);
    return !left.empty() && system_.restore(left, time);
}

xcb_timestamp_t WindowTracker::serverTime() {
    if (!system_.connection().isUsable())
        return XCB_CURRENT_TIME;
    system_.askTime();
    synchronize(system_.connection().get());
    const std::lock_guard lock(mutex_);
    takeQueuedEvents();
    return time_;
}

std::vector<WindowState> WindowTracker::readStates(std::span<const WindowAddress> windows) {
    WindowStates::Asking asking;
    {
        const std::lock_guard lock(mutex_);
        asking = states_.want(windows);
    }
    std::vector<WindowState> states = system_.readStates(windows);
    const std::lock_guard lock(mutex_);
    takeQueuedEvents();
    states_.keep(asking, states);
    return states;
}

WindowTracker::Questions WindowTracker::ask() {
    Questions questions;
    questions.when = std::chrono::steady_clock::now();
    {
        const std::lock_guard lock(mutex_);
        takeEvents();
        questions.states = states_.askUnknown();
        questions.knownRoots = knownRoots_;
        questions.knownManagers = knownManagers_;
        questions.rootChanges = rootChanges_;
    }
    system_.askTime();
    for (const WindowAddress &window : questions.states.windows)
        questions.stateQuestions.push_back(system_.askState(window));
    if (!questions.knownRoots)
        questions.roots = rootReader_.ask(questions.knownManagers.get());
    questions.last = xcb_get_input_focus(system_.connection().get());
    return questions;
}

void WindowTracker::discard(const Questions &questions) const {
    rootReader_.discard(questions.roots);
    system_.discardStates(questions.stateQuestions);
    xcb_discard_reply(system_.connection().get(), questions.last.sequence);
}

std::vector<Root> WindowTracker::takeRoots(const Questions &questions) {
    std::vector<Root> asked;
    if (!questions.knownRoots)
        asked = rootReader_.take(questions.roots, questions.knownManagers.get());
    const Reply<xcb_get_input_focus_reply_t> last(
        xcb_get_input_focus_reply(system_.connection().get(), questions.last, nullptr));
    std::uint64_t rootChanges = 0;
    bool areManagersKnown = false;
    {
        const std::lock_guard lock(mutex_);
        takeQueuedEvents();
        rootChanges = rootChanges_;
        areManagersKnown = !questions.knownManagers || questions.knownManagers == knownManagers_;
    }
    if (!asked.empty() && areManagersKnown)
        return keepRoots(std::move(asked), questions.rootChanges);
    if (questions.knownRoots && rootChanges == questions.rootChanges) {
        std::vector<Root> roots = *questions.knownRoots;
        for (Root &root : roots)
            root.request = questions.last.sequence;
        return roots;
    }
    // What was known is so no longer.
    return keepRoots(rootReader_.take(rootReader_.ask(nullptr), nullptr), rootChanges);
}

std::vector<Root> WindowTracker::keepRoots(std::vector<Root> roots, std::uint64_t rootChanges) {
    const std::lock_guard lock(mutex_);
    takeQueuedEvents();
    // That a selection has another owner nobody is told.
    if (rootChanges == rootChanges_ && std::ranges::none_of(roots, &Root::isAlive)) {
        knownRoots_ = std::make_shared<const std::vector<Root>>(roots);
        if (!knownManagers_)
            knownManagers_ = knownRoots_;
    }
    return roots;
}

void WindowTracker::askAhead() {
    if (!system_.connection().isUsable())
        return;
    std::optional<Questions> questions = ask();
    system_.flush();
    {
        const std::lock_guard lock(mutex_);
        askedAhead_.swap(questions);
    }
    // Of a press that nobody has carried out.
    if (questions)
        discard(*questions);
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
    if (system_.connection().isUsable())
        return answer(ask(), std::move(index));
    DesktopPicture empty;
    empty.index = std::move(index);
    return empty;
}

DesktopPicture WindowTracker::readAsked(std::shared_ptr<const ApplicationIndex> index) {
    std::optional<Questions> asked;
    {
        const std::lock_guard lock(mutex_);
        asked.swap(askedAhead_);
    }
    if (asked && std::chrono::steady_clock::now() - asked->when < kSameMoment)
        return answer(*asked, std::move(index));
    if (asked)
        discard(*asked);
    return read(std::move(index));
}

DesktopPicture WindowTracker::answer(const Questions &questions,
                                     std::shared_ptr<const ApplicationIndex> index) {
    DesktopPicture picture{.when = questions.when, .index = std::move(index), .windows = {}};
    std::vector<WindowState> states;
    states.reserve(questions.stateQuestions.size());
    for (const WindowSystem::StateQuestion &question : questions.stateQuestions)
        states.push_back(system_.takeState(question));
    std::vector<Root> roots = takeRoots(questions);
    {
        const std::lock_guard lock(mutex_);
        takeQueuedEvents();
        states_.keep(questions.states, states);
    }

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
    std::vector<xcb_window_t> matched;
    for (auto &[window, record] : known) {
        if (record.index == picture.index)
            continue;
        matched.push_back(window);
        record.matches = std::make_shared<const std::vector<ApplicationMatch>>(
            matchWindow(*record.facts, *picture.index));
        record.index = picture.index;
    }
    picture.windows.reserve(known.size());
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
                                       .active = window == root.active,
                                       .state = {}});
        }
    }

    {
        const std::lock_guard lock(mutex_);
        takeQueuedEvents();
        picture.serverTime = time_;
        for (ManagedWindow &window : picture.windows)
            window.state = states_.of(window.address.window);
        for (const xcb_window_t window : matched)
            if (const auto kept = records_.find(window);
                kept != records_.end() && kept->second.facts == known[window].facts)
                kept->second = known[window];
    }
    return picture;
}

}  // namespace kestrelbay::x11
