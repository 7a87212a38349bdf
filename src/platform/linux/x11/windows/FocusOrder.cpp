#include "platform/linux/x11/windows/FocusOrder.h"

#include <thread>

namespace kestrelbay::x11 {

namespace {

using namespace std::chrono_literals;

/// Long enough for a window manager on a busy machine, and short enough that a press does not
/// count as slow for it, which is from half a second on.
constexpr auto kLongest = 400ms;
/// Nothing tells when a request is worked off that changes nothing, such as to give the focus to
/// the window that has it.
constexpr auto kShortest = 10ms;
constexpr auto kPause = 1ms;

}  // namespace

void FocusOrder::asked(const WindowAddress &window, bool toHaveIt) {
    const std::lock_guard lock(mutex_);
    last_ = {window, toHaveIt, Clock::now()};
}

void FocusOrder::awaitLast() {
    std::optional<Request> request;
    {
        const std::lock_guard lock(mutex_);
        request = last_;
    }
    if (!request)
        return;
    const auto waited = [&] { return Clock::now() - request->when; };
    while (waited() < kShortest || (waited() < kLongest && !hasComeAbout(*request)))
        std::this_thread::sleep_for(kPause);
}

bool FocusOrder::hasComeAbout(const Request &request) const {
    const auto active = propertyWord(system_.connection().readProperty(
        request.window.root, system_.atoms()["_NET_ACTIVE_WINDOW"], XCB_ATOM_WINDOW, 1));
    return (active == request.window.window) == request.toHaveIt;
}

}  // namespace kestrelbay::x11
