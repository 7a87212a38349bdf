#include "Latency.h"

#include <stdexcept>

#include <poll.h>

#include <xcb/xtest.h>

namespace kestrelbay::bench {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using desktop::Reply;

namespace {
constexpr std::uint8_t kSuper = testing::xkey::kLeftSuper;
constexpr auto kGiveUp = 5s;
constexpr auto kGiveUpOther = 30s;
constexpr auto kAskOtherAgain = 1s;
}  // namespace

Latency::Latency(desktop::Desktop &desktop, xcb_window_t target, xcb_window_t other)
    : desktop_(desktop),
      target_(target),
      other_(other),
      watch_(desktop.displayName()),
      keyboard_(desktop.displayName()) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(watch_.get(), watch_.root(), XCB_CW_EVENT_MASK, &mask);
    watch_.sync();
}

xcb_window_t Latency::active() {
    const auto values = watch_.numbers(watch_.root(), "_NET_ACTIVE_WINDOW");
    return values.empty() ? xcb_window_t{XCB_NONE} : values.front();
}

bool Latency::waitForChange(std::chrono::milliseconds timeout) {
    const xcb_atom_t property = watch_.atom("_NET_ACTIVE_WINDOW");
    const Clock::time_point end = Clock::now() + timeout;
    while (true) {
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(watch_.get())}) {
            if ((event->response_type & 0x7fU) == XCB_PROPERTY_NOTIFY &&
                reinterpret_cast<const xcb_property_notify_event_t &>(*event).atom == property)
                return true;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left <= 0ms || !watch_.alive())
            return false;
        pollfd socket{.fd = xcb_get_file_descriptor(watch_.get()), .events = POLLIN, .revents = 0};
        ::poll(&socket, 1, static_cast<int>(left.count()));
    }
}

void Latency::waitUntilQuiet(std::chrono::milliseconds quiet) {
    while (waitForChange(quiet)) {
    }
}

std::optional<double> Latency::trial(Contender &contender, std::chrono::milliseconds quiet) {
    const Clock::time_point giveUpOther = Clock::now() + kGiveUpOther;
    while (active() != other_) {
        if (Clock::now() > giveUpOther)
            throw std::runtime_error("the other window did not come forward");
        // A window manager that is late may refuse what was asked at a time before its own doing.
        desktop_.view().activate(other_);
        (void)waitForChange(kAskOtherAgain);
    }
    waitUntilQuiet(quiet);

    keyboard_.press(kSuper);
    const Clock::time_point start = Clock::now();
    xcb_test_fake_input(watch_.get(), XCB_KEY_PRESS, contender.key().xKeycode, XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, 0);
    xcb_flush(watch_.get());
    std::optional<double> time;
    while (waitForChange(kGiveUp)) {
        const Clock::time_point changed = Clock::now();
        if (active() == target_) {
            time = std::chrono::duration<double, std::milli>(changed - start).count();
            break;
        }
    }
    contender.expectRunning();
    keyboard_.release(contender.key().xKeycode);
    keyboard_.release(kSuper);
    return time;
}

std::vector<Samples> Latency::run(std::vector<Contender> &contenders, int trials,
                                  std::chrono::milliseconds quiet) {
    return byTurns(contenders.size(), trials,
                   [&](std::size_t contender) { return trial(contenders[contender], quiet); });
}

}  // namespace kestrelbay::bench
