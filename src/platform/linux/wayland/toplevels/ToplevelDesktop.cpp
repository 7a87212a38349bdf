#include "platform/linux/wayland/toplevels/ToplevelDesktop.h"

#include <algorithm>
#include <utility>

#include "platform/linux/wayland/toplevels/ForeignToplevels.h"
#include "platform/linux/wayland/toplevels/FoundAgain.h"
#include "platform/linux/wayland/toplevels/PlasmaWindows.h"

namespace kestrelbay::wayland {

namespace {

/// For a compositor that has gone.
constexpr unsigned kMillisecondsBetweenLooks = 1000;

/// Windows that open just now are told of in one more round trip, or in two.
constexpr int kMostRoundTrips = 3;

}  // namespace

QLatin1StringView nameOf(ToplevelProtocol protocol) {
    return protocol == ToplevelProtocol::PlasmaWindowManagement
               ? QLatin1StringView("org_kde_plasma_window_management")
               : QLatin1StringView("wlr-foreign-toplevel-management");
}

ToplevelDesktop::Session::Session(const QString &socketPath, ToplevelProtocol protocol,
                                  std::chrono::milliseconds patience, ToplevelHistory &history)
    : connection(socketPath, patience), globals(connection) {
    if (protocol == ToplevelProtocol::PlasmaWindowManagement) {
        version = PlasmaWindows::versionIn(globals);
        if (version > 0)
            toplevels = std::make_unique<PlasmaWindows>(globals, history);
    } else {
        version = ForeignToplevels::versionIn(globals);
        if (version > 0)
            toplevels = std::make_unique<ForeignToplevels>(globals, history);
    }
}

ToplevelDesktop::ToplevelDesktop(QString socketPath, ToplevelProtocol protocol,
                                 std::chrono::milliseconds patience)
    : socketPath_(std::move(socketPath)), protocol_(protocol), patience_(patience) {
    begin(makeSession());
}

std::unique_ptr<ToplevelDesktop::Session> ToplevelDesktop::makeSession() {
    return std::make_unique<Session>(socketPath_, protocol_, patience_, history_);
}

void ToplevelDesktop::begin(std::unique_ptr<Session> session) {
    const std::vector<DesktopWindow> before = takeIn(false);
    session_ = std::move(session);
    // Now the order of windows tells more of their use than when some have been opened since.
    const std::vector<std::int64_t> again = foundAgain(before, windows());
    std::for_each(again.rbegin(), again.rend(),
                  [this](std::int64_t window) { history_.used.note(window); });
}

bool ToplevelDesktop::isOpen() const {
    return session_ && session_->connection.isOpen() && session_->toplevels;
}

std::uint32_t ToplevelDesktop::version() {
    const std::lock_guard lock(mutex_);
    return isOpen() ? session_->version : 0;
}

std::vector<DesktopWindow> ToplevelDesktop::read() {
    const std::lock_guard lock(mutex_);
    return windows();
}

void ToplevelDesktop::askAhead() {
    // Whoever has it asks just now.
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock || !isOpen() || session_->connection.isAsked())
        return;
    session_->connection.ask();
    askedAhead_ = Clock::now();
}

std::vector<DesktopWindow> ToplevelDesktop::readAsked() {
    const std::lock_guard lock(mutex_);
    const auto asked = std::exchange(askedAhead_, std::nullopt);
    if (!asked || Clock::now() - *asked > kSameMoment || !isOpen())
        return windows();
    return takeIn(session_->connection.awaitAnswer());
}

std::vector<DesktopWindow> ToplevelDesktop::windows() {
    return takeIn(isOpen() && session_->connection.roundTrip());
}

std::vector<DesktopWindow> ToplevelDesktop::takeIn(bool isUpToDate) {
    for (int i = 1; isUpToDate && i < kMostRoundTrips && !session_->toplevels->isWhole(); ++i)
        isUpToDate = session_->connection.roundTrip();
    if (!session_ || !session_->toplevels)
        return {};
    std::vector<DesktopWindow> windows = session_->toplevels->windows();
    for (const DesktopWindow &window : windows) {
        if (window.isFocused)
            history_.used.note(window.id);
    }
    history_.used.putInOrder(windows);
    return windows;
}

bool ToplevelDesktop::hide(std::span<const std::int64_t> windows) {
    const std::lock_guard lock(mutex_);
    if (!isOpen())
        return false;
    Toplevels &toplevels = *session_->toplevels;
    for (const std::int64_t window : windows)
        toplevels.setMinimized(window, true);
    // The first answer may come before the states that are its consequence.
    if (!session_->connection.roundTrip() || !session_->connection.roundTrip())
        return session_->connection.isOpen();
    const auto isAsked = [windows](const DesktopWindow &window) {
        return std::ranges::find(windows, window.id) != windows.end();
    };
    const std::vector<DesktopWindow> all = takeIn(true);
    const bool isOneInFront = std::ranges::any_of(all, [&](const DesktopWindow &window) {
        return isAsked(window) && window.isFocused && !window.isHidden;
    });
    const auto other = std::ranges::find_if(
        all, [&](const DesktopWindow &window) { return !isAsked(window) && !window.isHidden; });
    if (!isOneInFront || other == all.end())
        return true;
    toplevels.activate(other->id);
    return session_->connection.flush();
}

bool ToplevelDesktop::bringForward(std::span<const std::int64_t> hidden, std::int64_t focused) {
    const std::lock_guard lock(mutex_);
    if (!isOpen())
        return false;
    for (const std::int64_t window : hidden)
        session_->toplevels->setMinimized(window, false);
    session_->toplevels->activate(focused);
    return session_->connection.flush();
}

void ToplevelDesktop::listen(News news) {
    news_.emplace(std::move(news));
    news_->loop.post([this] { startListening(); });
}

void ToplevelDesktop::startListening() {
    const std::lock_guard lock(mutex_);
    if (isOpen())
        reader_.emplace(news_->loop, session_->connection.descriptor(), [this] { takeInEvents(); });
    else
        news_->loop.postAfter(kMillisecondsBetweenLooks, [this] { lookForCompositor(); });
}

void ToplevelDesktop::takeInEvents() {
    const bool isAwaited = news_->isWindowAwaited();
    if (isAwaited)
        news_->windowsChanged();
    // Whoever has it takes in events just now.
    const std::unique_lock lock(mutex_, std::try_to_lock);
    std::size_t count = 0;
    if (lock) {
        count = session_->connection.takeInEvents();
        if (!session_->connection.isOpen()) {
            reader_->stop();
            news_->loop.post([this] { lookForCompositor(); });
            return;
        }
    }
    const std::chrono::milliseconds pause = pause_.after(count, Clock::now());
    reader_->pause(isAwaited ? kBetweenAwaitedEvents : pause);
}

void ToplevelDesktop::lookForCompositor() {
    reader_.reset();
    std::unique_ptr<Session> session = makeSession();
    {
        const std::lock_guard lock(mutex_);
        begin(std::move(session));
    }
    startListening();
}

}  // namespace kestrelbay::wayland
