#include "platform/linux/glib/LoopTimer.h"

#include <cstdint>
#include <utility>

#include <glib-unix.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace kestrelbay {

namespace {

// To nothing at all a timer is stopped.
itimerspec after(std::chrono::milliseconds time) {
    itimerspec due{};
    due.it_value.tv_sec = time.count() / 1000;
    due.it_value.tv_nsec = time.count() % 1000 * 1'000'000 + 1;
    return due;
}

}  // namespace

LoopTimer::LoopTimer(BackgroundLoop &loop, std::function<void()> due)
    : due_(std::move(due)),
      descriptor_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)),
      source_(g_unix_fd_source_new(descriptor_, G_IO_IN)) {
    const GUnixFDSourceFunc isDue = [](gint descriptor, GIOCondition, gpointer self) -> gboolean {
        std::uint64_t times = 0;
        if (::read(descriptor, &times, sizeof times) > 0)
            static_cast<LoopTimer *>(self)->due_();
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(source_.get(), G_SOURCE_FUNC(isDue), this, nullptr);
    loop.attach(source_.get());
}

LoopTimer::~LoopTimer() {
    g_source_destroy(source_.get());
    ::close(descriptor_);
}

void LoopTimer::start(std::chrono::milliseconds time) const {
    const itimerspec due = after(time);
    static_cast<void>(::timerfd_settime(descriptor_, 0, &due, nullptr));
}

}  // namespace kestrelbay
