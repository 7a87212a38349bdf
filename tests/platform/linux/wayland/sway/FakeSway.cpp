#include "platform/linux/wayland/sway/FakeSway.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include <QFile>

namespace kestrelbay::testing {

namespace {

int listeningSocket(const QString &path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(QFile::encodeName(path), std::begin(address.sun_path));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::ignore = ::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof(address));
    std::ignore = ::listen(descriptor, 8);
    return descriptor;
}

void send(int connection, const QByteArray &bytes) {
    std::ignore =
        ::send(connection, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
}

}  // namespace

FakeSway::FakeSway(Answer answer)
    : answer_(std::move(answer)),
      listening_(listeningSocket(socketPath())),
      thread_([this] { serve(); }) {}

FakeSway::~FakeSway() {
    ::shutdown(listening_, SHUT_RDWR);
    thread_.join();
    hangUp();
    for (std::thread &thread : threads_)
        thread.join();
    for (const int connection : connections_)
        ::close(connection);
    ::close(listening_);
}

void FakeSway::tell(const QByteArray &bytes) {
    const std::lock_guard lock(mutex_);
    for (const int listener : listeners_)
        send(listener, bytes);
}

void FakeSway::hangUp() {
    const std::lock_guard lock(mutex_);
    for (const int connection : connections_)
        ::shutdown(connection, SHUT_RDWR);
}

void FakeSway::serve() {
    for (;;) {
        const int connection = ::accept(listening_, nullptr, nullptr);
        if (connection < 0)
            return;
        const std::lock_guard lock(mutex_);
        connections_.push_back(connection);
        threads_.emplace_back([this, connection] {
            serveOne(connection);
            ::shutdown(connection, SHUT_RDWR);
        });
    }
}

void FakeSway::serveOne(int connection) {
    sway::IpcMessageReader reader;
    std::array<char, 4096> buffer{};
    for (;;) {
        while (const std::optional<sway::IpcMessage> message = reader.next()) {
            const std::lock_guard lock(mutex_);
            const std::optional<QByteArray> answer = answer_(*message);
            if (!answer)
                return;
            send(connection, *answer);
            if (message->type == sway::MessageType::Subscribe)
                listeners_.push_back(connection);
        }
        const ssize_t count = ::recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return;
        reader.append({buffer.data(), count});
    }
}

}  // namespace kestrelbay::testing
