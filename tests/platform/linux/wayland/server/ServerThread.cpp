#include "platform/linux/wayland/server/ServerThread.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>

#include <QFile>

#include <wayland-server.h>

namespace kestrelbay::testing {

namespace {

int emptyOut(int descriptor, std::uint32_t /*mask*/, void * /*data*/) {
    std::uint64_t count = 0;
    std::ignore = ::read(descriptor, &count, sizeof count);
    return 0;
}

}  // namespace

ServerThread::ServerThread()
    : display_(wl_display_create()),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      waking_(wl_event_loop_add_fd(wl_display_get_event_loop(display_), wake_, WL_EVENT_READABLE,
                                   &emptyOut, nullptr)) {
    const QByteArray path = QFile::encodeName(socketPath());
    std::ignore = wl_display_add_socket(display_, path.constData());
}

ServerThread::~ServerThread() {
    stop();
    wl_event_source_remove(waking_);
    wl_display_destroy(display_);
    ::close(wake_);
}

void ServerThread::start() {
    thread_ = std::thread([this] { serve(); });
}

void ServerThread::stop() {
    if (!thread_.joinable())
        return;
    end_.set_value();
    run([this] { isEnded_ = true; });
    thread_.join();
    wl_display_destroy_clients(display_);
}

void ServerThread::serve() {
    while (!isEnded_) {
        wl_display_flush_clients(display_);
        wl_event_loop_dispatch(wl_display_get_event_loop(display_), -1);
        std::vector<std::packaged_task<void()>> now;
        {
            const std::lock_guard lock(mutex_);
            now.swap(works_);
        }
        for (std::packaged_task<void()> &work : now)
            work();
    }
}

void ServerThread::post(std::packaged_task<void()> task) {
    {
        const std::lock_guard lock(mutex_);
        works_.push_back(std::move(task));
    }
    const std::uint64_t one = 1;
    std::ignore = ::write(wake_, &one, sizeof one);
}

void ServerThread::run(const std::function<void()> &work) {
    std::packaged_task<void()> task([this, &work] {
        work();
        wl_display_flush_clients(display_);
    });
    std::future<void> done = task.get_future();
    post(std::move(task));
    done.wait();
}

void ServerThread::hang() {
    const auto begun = std::make_shared<std::promise<void>>();
    post(std::packaged_task<void()>([this, begun] {
        begun->set_value();
        end_.get_future().wait();
    }));
    begun->get_future().wait();
}

void ServerThread::hangUp() {
    run([this] { wl_display_destroy_clients(display_); });
}

}  // namespace kestrelbay::testing
