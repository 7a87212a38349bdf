#include "platform/linux/x11/keyboard/WatchedEvents.h"

#include <algorithm>
#include <array>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
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
      wakeUp_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      thread_([this] { run(); }) {}

WatchedEvents::~WatchedEvents() {
    {
        const std::lock_guard lock(mutex_);
        isStopping_ = true;
    }
    stopped_.notify_one();
    wake();
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
        wake();
    } else if (std::ranges::any_of(taken_, [this](const auto &one) { return isPress(*one); })) {
        pressSince_ = Clock::now();
    }
    return event;
}

void WatchedEvents::mayHaveMore() {
    const std::lock_guard lock(mutex_);
    if (!isLooking_)
        wake();
}

bool WatchedEvents::takeRelease() {
    const std::lock_guard lock(mutex_);
    return std::exchange(released_, false);
}

void WatchedEvents::run() {
    std::unique_lock lock(mutex_);
    while (!isStopping_ && connection_->isUsable()) {
        const auto deadline =
            pressSince_ ? std::optional(*pressSince_ + settings_.patience) : std::nullopt;
        if (deadline && *deadline <= Clock::now()) {
            release();
            continue;
        }
        lock.unlock();
        const bool hasMore = sleepUntil(deadline);
        lock.lock();
        if (!hasMore)
            continue;
        isLooking_ = true;
        stopped_.wait_for(lock, kGrace, [this] { return isStopping_; });
        isLooking_ = false;
        takeOver();
    }
}

/// False when it was the deadline.
bool WatchedEvents::sleepUntil(std::optional<Clock::time_point> deadline) const {
    int milliseconds = -1;
    if (deadline) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now());
        milliseconds = static_cast<int>(std::max<std::int64_t>(left.count(), 0));
    }
    std::array<pollfd, 2> sources{pollfd{connection_->fileDescriptor(), POLLIN, 0},
                                  pollfd{wakeUp_.fd, POLLIN, 0}};
    if (::poll(sources.data(), sources.size(), milliseconds) <= 0)
        return false;
    std::uint64_t wakes = 0;
    static_cast<void>(::read(wakeUp_.fd, &wakes, sizeof wakes));
    return true;
}

void WatchedEvents::wake() const {
    const std::uint64_t one = 1;
    static_cast<void>(::write(wakeUp_.fd, &one, sizeof one));
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
