#include "platform/linux/apps/turns.h"

#include <array>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QFile>

namespace kestrelbay::testing {

namespace {

QString pathOfDisplay(const QString &number) {
    return QStringLiteral("/tmp/.X11-unix/X") + number;
}

sockaddr_un addressOf(const QString &path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.toLatin1().constData(), sizeof address.sun_path - 1);
    return address;
}

/// False when the other end has gone.
bool pass(int from, int to) {
    std::array<char, 65536> buffer;
    const ssize_t size = ::read(from, buffer.data(), buffer.size());
    for (ssize_t done = 0; done < size;) {
        const ssize_t written =
            ::write(to, buffer.data() + done, static_cast<std::size_t>(size - done));
        if (written <= 0)
            return false;
        done += written;
    }
    return size > 0;
}

}  // namespace

TurnCounter::TurnCounter(const QString &serverName) {
    server_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un server = addressOf(pathOfDisplay(serverName.mid(1)));
    if (::connect(server_, reinterpret_cast<const sockaddr *>(&server), sizeof server) != 0)
        throw std::runtime_error("no server");
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    // Above every number that servers choose by themselves.
    for (int number = 5000; number < 6000; ++number) {
        socketPath_ = pathOfDisplay(QString::number(number));
        const sockaddr_un own = addressOf(socketPath_);
        if (::bind(listener_, reinterpret_cast<const sockaddr *>(&own), sizeof own) == 0) {
            displayName_ = QStringLiteral(":%1").arg(number);
            break;
        }
    }
    if (displayName_.isEmpty() || ::listen(listener_, 1) != 0)
        throw std::runtime_error("no free display");
    thread_ = std::thread([this] { forward(); });
}

TurnCounter::~TurnCounter() {
    stop_ = true;
    thread_.join();
    ::close(server_);
    if (listener_ < 0)
        return;
    ::close(listener_);
    QFile::remove(socketPath_);
}

void TurnCounter::forward() {
    int client = -1;
    bool answered = true;
    while (!stop_) {
        std::array<pollfd, 2> ends{
            {{client < 0 ? listener_ : client, POLLIN, 0}, {server_, POLLIN, 0}}};
        ::poll(ends.data(), client < 0 ? 1 : 2, 20);
        if (client < 0) {
            if (ends[0].revents != 0) {
                client = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
                QFile::remove(socketPath_);
                ::close(std::exchange(listener_, -1));
            }
            continue;
        }
        if (ends[0].revents != 0) {
            turns_ += answered ? 1 : 0;
            answered = false;
            if (!pass(client, server_))
                break;
        }
        if (ends[1].revents != 0) {
            answered = true;
            if (!pass(server_, client))
                break;
        }
    }
    if (client >= 0)
        ::close(client);
}

}  // namespace kestrelbay::testing
