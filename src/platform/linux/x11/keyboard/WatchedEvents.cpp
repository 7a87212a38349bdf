#include "platform/linux/x11/keyboard/WatchedEvents.h"

#include <algorithm>
#include <array>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "platform/linux/x11/keyboard/KeyPress.h"

namespace kestrelbay::x11 {

namespace {

/// The main thread reads within microseconds when it can. What is still there after this
/// time the watchdog looks at itself, which is also how exactly it knows when a press came.
constexpr std::chrono::milliseconds kGrace{50};

}  // namespace

WatchedEvents::Close::~Close() {
    ::close(fd);
}

WatchedEvents::WatchedEvents(std::shared_ptr<const XConnection> connection,
                             xcb_input_device_id_t keyboard, Settings settings)
    : connection_(std::move(connection)),
      keyboard_(keyboard),
      xinputOpcode_(xcb_get_extension_data(connection_->get(), &xcb_input_id)->major_opcode),
      settings_(std::move(settings)),
      timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)),
      stop_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      mainLoop_([this] { mayHaveMore(); }),
      thread_([this] { run(); }) {}

WatchedEvents::~WatchedEvents() {
    const std::uint64_t one = 1;
    static_cast<void>(::write(stop_.fd, &one, sizeof one));
    thread_.join();
}

Reply<xcb_generic_event_t> WatchedEvents::next() {
    const std::lock_guard lock(mutex_);
    Reply<xcb_generic_event_t> event;
    if (taken_.empty()) {
        event = read();
    } else {
        event = std::move(taken_.front());
        taken_.pop_front();
    }
    pressSince_.reset();
    if (event && isPress(*event)) {
        pressSince_ = Clock::now();
        if (!isLooking_)
            lookAt(Clock::now() + kGrace);
    } else if (std::ranges::any_of(taken_, [this](const auto &one) { return isPress(*one); })) {
        pressSince_ = Clock::now();
    }
    return event;
}

void WatchedEvents::mayHaveMore() {
    const std::lock_guard lock(mutex_);
    if (!isLooking_)
        lookAt(Clock::now() + kGrace);
}

bool WatchedEvents::takeRelease() {
    const std::lock_guard lock(mutex_);
    return std::exchange(released_, false);
}

void WatchedEvents::run() {
    std::optional<Clock::time_point> deadline;
    while (connection_->isUsable()) {
        sleep();
        isLooking_ = true;
        if (!leaveToMainThread(deadline))
            return;
        const std::lock_guard lock(mutex_);
        isLooking_ = false;
        timerDue_.reset();
        if (!MainLoopSleep::isAsleep())
            takeOver();
        if (pressSince_ && Clock::now() >= *pressSince_ + settings_.patience)
            release();
        deadline.reset();
        if (pressSince_) {
            deadline = *pressSince_ + settings_.patience;
            lookAt(*deadline);
        }
    }
}

void WatchedEvents::sleep() const {
    const int socket = MainLoopSleep::isAsleep() ? -1 : connection_->fileDescriptor();
    std::array<pollfd, 3> sources{pollfd{socket, POLLIN, 0}, pollfd{timer_.fd, POLLIN, 0},
                                  pollfd{stop_.fd, POLLIN, 0}};
    static_cast<void>(::poll(sources.data(), sources.size(), -1));
}

/// For a moment, and not beyond the deadline. False when it is time to end.
bool WatchedEvents::leaveToMainThread(std::optional<Clock::time_point> deadline) const {
    Clock::duration time = kGrace;
    if (deadline)
        time = std::clamp<Clock::duration>(*deadline - Clock::now(), Clock::duration::zero(), time);
    pollfd stop{stop_.fd, POLLIN, 0};
    static_cast<void>(::poll(
        &stop, 1, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(time).count())));
    std::uint64_t count = 0;
    static_cast<void>(::read(timer_.fd, &count, sizeof count));
    return stop.revents == 0;
}

/// At the latest; with the lock held.
void WatchedEvents::lookAt(Clock::time_point due) {
    if (timerDue_ && *timerDue_ <= due)
        return;
    timerDue_ = due;
    // This clock is CLOCK_MONOTONIC on Linux.
    const std::int64_t nanoseconds = std::chrono::nanoseconds(due.time_since_epoch()).count();
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    itimerspec setting{};
    setting.it_value.tv_sec = nanoseconds / kPerSecond;
    setting.it_value.tv_nsec = nanoseconds % kPerSecond;
    static_cast<void>(::timerfd_settime(timer_.fd, TFD_TIMER_ABSTIME, &setting, nullptr));
}

Reply<xcb_generic_event_t> WatchedEvents::read() {
    while (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_->get())}) {
        // Sequence numbers start again after the highest.
        const bool isAnswered =
            answeredBefore_ && isPress(*event) &&
            static_cast<std::int32_t>(event->full_sequence - *answeredBefore_) < 0;
        if (!isAnswered)
            return event;
    }
    return nullptr;
}

bool WatchedEvents::isPress(const xcb_generic_event_t &event) const {
    return keyPressOf(event, xinputOpcode_).has_value();
}

void WatchedEvents::takeOver() {
    const std::size_t before = taken_.size();
    while (Reply<xcb_generic_event_t> event = read()) {
        if (!pressSince_ && isPress(*event))
            pressSince_ = Clock::now();
        taken_.push_back(std::move(event));
    }
    if (taken_.size() > before || !connection_->isUsable())
        settings_.eventsTaken();
}

void WatchedEvents::release() {
    xcb_connection_t *c = connection_->get();
    const std::uint32_t anyModifier = XCB_INPUT_MODIFIER_MASK_ANY;
    for (const xcb_window_t root : connection_->roots()) {
        xcb_ungrab_key(c, XCB_GRAB_ANY, root, XCB_MOD_MASK_ANY);
        xcb_input_xi_passive_ungrab_device(c, root, XCB_GRAB_ANY, keyboard_, 1,
                                           XCB_INPUT_GRAB_TYPE_KEYCODE, &anyModifier);
    }
    // Whichever grab it was that froze the keyboard, and the one for recording. With no
    // other left, a press that comes between the requests cannot be meant.
    xcb_allow_events(c, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
    answeredBefore_ = xcb_input_xi_allow_events(c, XCB_CURRENT_TIME, keyboard_,
                                                XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0, XCB_NONE)
                          .sequence;
    xcb_flush(c);
    std::erase_if(taken_, [this](const auto &event) { return isPress(*event); });
    pressSince_.reset();
    released_ = true;
    settings_.eventsTaken();
}

}  // namespace kestrelbay::x11
