#include "platform/linux/WindowNews.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace kestrelbay::x11 {

namespace {

/// The round trips of a press are over long before.
constexpr std::chrono::milliseconds kPressLasts{50};

/// Between two looks at what has piled up on the tracker's connection.
constexpr std::chrono::milliseconds kFirstPause{std::chrono::minutes(5)};
constexpr std::chrono::milliseconds kShortestPause{std::chrono::seconds(1)};
constexpr std::chrono::milliseconds kLongestPause{std::chrono::minutes(10)};
/// Each takes the server 32 bytes.
constexpr std::size_t kManyEvents = 10'000;

}  // namespace

WindowNews::WindowNews(const QString &displayName, WindowTracker &tracker, BackgroundLoop &loop,
                       Handlers handlers)
    : tracker_(tracker),
      handlers_(std::move(handlers)),
      pause_(kFirstPause),
      lateEvents_(loop, tracker.windowSystem().connection().fileDescriptor(),
                  [this] { takeInLateEvents(); }) {
    loop.post([this, displayName, &loop] { listen(displayName, loop); });
}

void WindowNews::listen(const QString &displayName, BackgroundLoop &loop) {
    roots_.emplace(displayName);
    if (!roots_->isUsable())
        return;
    const auto atoms = internAtoms(
        *roots_, std::array<std::string_view, 3>{"_NET_ACTIVE_WINDOW", "_NET_CLIENT_LIST",
                                                 "_NET_SUPPORTING_WM_CHECK"});
    activeWindow_ = atoms[0];
    clientList_ = atoms[1];
    managerCheck_ = atoms[2];
    for (const xcb_window_t root : roots_->roots())
        roots_->selectEvents(root, XCB_EVENT_MASK_PROPERTY_CHANGE);
    // What was active before this is not missed.
    synchronize(roots_->get());
    rootEvents_.emplace(loop, roots_->fileDescriptor(), [this] { takeInRootEvents(); });
    handlers_.activeChanged();
    takeInRootEvents();
}

void WindowNews::takeInRootEvents() {
    bool isActiveChanged = false;
    bool areWindowsChanged = false;
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(roots_->get())}) {
        if ((event->response_type & 0x7fU) != XCB_PROPERTY_NOTIFY)
            continue;
        const xcb_atom_t atom = reinterpret_cast<const xcb_property_notify_event_t &>(*event).atom;
        isActiveChanged |= atom == activeWindow_ || atom == managerCheck_;
        areWindowsChanged |= atom == clientList_;
    }
    if (isActiveChanged)
        handlers_.activeChanged();
    else if (areWindowsChanged)
        handlers_.windowsChanged();
    // A server that has gone leaves a descriptor that can be read forever.
    if (!roots_->isUsable())
        rootEvents_->stop();
}

void WindowNews::takeInLateEvents() {
    if (Clock::now() - lastPress_.load() >= kPressLasts) {
        const bool areMany = tracker_.processEvents() > kManyEvents;
        pause_ = std::clamp(areMany ? pause_ / 2 : pause_ * 2, kShortestPause, kLongestPause);
    }
    if (tracker_.windowSystem().connection().isUsable())
        lateEvents_.pause(pause_);
    else
        lateEvents_.stop();
}

}  // namespace kestrelbay::x11
