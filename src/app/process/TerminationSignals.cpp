#include "app/process/TerminationSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace kestrelbay {

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler may do little more than write to a descriptor.
std::array<int, 2> pipeEnds{-1, -1};

void noteSignal(int /*number*/) {
    const int saved = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &byte, 1);
    errno = saved;
}

void setHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int number : kSignals)
        ::sigaction(number, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : terminate_(std::move(terminate)) {
    if (::pipe(pipeEnds.data()) != 0)
        return;  // then the signals end the program as they always do
    for (const int end : pipeEnds) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    QMetaObject::invokeMethod(this, &TerminationSignals::listen, Qt::QueuedConnection);
    setHandler(noteSignal);
}

void TerminationSignals::listen() {
    notifier_.emplace(pipeEnds[0], QSocketNotifier::Read);
    connect(&*notifier_, &QSocketNotifier::activated, this, [this] {
        notifier_->setEnabled(false);
        terminate_();
    });
}

TerminationSignals::~TerminationSignals() {
    if (pipeEnds[0] < 0)
        return;
    setHandler(SIG_DFL);
    notifier_.reset();
    for (int &end : pipeEnds)
        ::close(std::exchange(end, -1));
}

}  // namespace kestrelbay
