#include "platform/linux/wayland/client/Connection.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <wayland-client.h>

#include "platform/linux/wayland/client/Socket.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::wayland {

namespace {

QString systemError(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

/// Takes the answer away from its owner.
void onAnswer(void *owner, wl_callback * /*callback*/, std::uint32_t /*serial*/) {
    static_cast<std::unique_ptr<wl_callback, ReleaseProxy> *>(owner)->reset();
}

constexpr wl_callback_listener kAnswerListener{.done = &onAnswer};

}  // namespace

void ReleaseProxy::release(void *proxy) {
    wl_proxy_destroy(static_cast<wl_proxy *>(proxy));
}

void Connection::Disconnect::operator()(wl_display *display) const {
    wl_display_disconnect(display);
}

void Connection::EndQueue::operator()(wl_event_queue *queue) const {
    wl_event_queue_destroy(queue);
}

void Connection::EndWrapper::operator()(wl_display *wrapper) const {
    wl_proxy_wrapper_destroy(wrapper);
}

Connection::Connection(const QString &socketPath, std::chrono::milliseconds patience)
    : patience_(patience) {
    const int socket = connectedSocket(socketPath);
    if (socket >= 0)
        own_.reset(wl_display_connect_to_fd(socket));
    if (own_)
        open(*own_);
    else
        error_ = u"nobody answers at \"%1\": %2"_s.arg(socketPath, systemError(errno));
}

Connection::Connection(wl_display &shared, std::chrono::milliseconds patience)
    : patience_(patience) {
    open(shared);
}

Connection::~Connection() = default;

void Connection::open(wl_display &display) {
    display_ = &display;
    events_.reset(wl_display_create_queue(display_));
    requests_.reset(static_cast<wl_display *>(wl_proxy_create_wrapper(display_)));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy *>(requests_.get()), events_.get());
    checkForError();
}

int Connection::descriptor() const {
    return display_ ? wl_display_get_fd(display_) : -1;
}

void Connection::checkForError() {
    if (const int error = wl_display_get_error(display_); error != 0 && isOpen())
        error_ = u"the connection to the compositor broke: "_s + systemError(error);
}

bool Connection::flush() {
    const Clock::time_point end = Clock::now() + patience_;
    while (isOpen() && wl_display_flush(display_) < 0) {
        // A compositor that has gone is no error yet: it may have said why, which is read first.
        if (errno != EAGAIN || !waitFor(POLLOUT, end)) {
            checkForError();
            return false;
        }
    }
    return isOpen();
}

std::size_t Connection::takeInEvents() {
    const std::size_t before = toldCount_;
    while (readEvents(Clock::now())) {
    }
    flush();
    return toldCount_ - before;
}

bool Connection::roundTrip() {
    ask();
    return awaitAnswer();
}

void Connection::ask() {
    if (!isOpen())
        return;
    answer_.reset(wl_display_sync(requests_.get()));
    wl_callback_add_listener(answer_.get(), &kAnswerListener, &answer_);
    flush();
}

bool Connection::awaitAnswer() {
    const Clock::time_point end = Clock::now() + patience_;
    while (answer_ && readEvents(end)) {
    }
    const bool isLate = answer_ != nullptr;
    answer_.reset();
    // Listeners have had something to ask for.
    return flush() && !isLate;
}

bool Connection::readEvents(Clock::time_point end) {
    if (!isOpen())
        return false;
    if (wl_display_prepare_read_queue(display_, events_.get()) != 0) {
        // What others had read for us is to be told first.
        tellListeners();
        return isOpen();
    }
    if (!waitFor(POLLIN, end)) {
        wl_display_cancel_read(display_);
        return false;
    }
    wl_display_read_events(display_);
    tellListeners();
    return isOpen();
}

void Connection::tellListeners() {
    toldCount_ += static_cast<std::size_t>(
        std::max(0, wl_display_dispatch_queue_pending(display_, events_.get())));
    checkForError();
}

bool Connection::waitFor(short what, Clock::time_point end) const {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        pollfd waiting{.fd = wl_display_get_fd(display_), .events = what, .revents = 0};
        const int found = ::poll(&waiting, 1, std::max(0, static_cast<int>(left.count())));
        if (found >= 0 || errno != EINTR)
            return found > 0;
    }
}

}  // namespace kestrelbay::wayland
