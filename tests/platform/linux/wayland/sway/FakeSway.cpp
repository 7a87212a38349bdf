#include "platform/linux/wayland/sway/FakeSway.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

#include <QFile>

namespace kestrelbay::testing {

namespace {

int listeningSocket(const QString &path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(QFile::encodeName(path), std::begin(address.sun_path));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ::bind(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof(address));
    ::listen(descriptor, 8);
    return descriptor;
}

}  // namespace

FakeSway::FakeSway(Answer answer)
    : answer_(std::move(answer)),
      listening_(listeningSocket(socketPath())),
      thread_([this] { serve(); }) {}

FakeSway::~FakeSway() {
    ::shutdown(listening_, SHUT_RDWR);
    thread_.join();
    ::close(listening_);
}

void FakeSway::serve() const {
    for (;;) {
        const int connection = ::accept(listening_, nullptr, nullptr);
        if (connection < 0)
            return;
        serveOne(connection);
        ::close(connection);
    }
}

void FakeSway::serveOne(int connection) const {
    sway::IpcMessageReader reader;
    std::array<char, 4096> buffer{};
    for (;;) {
        while (const std::optional<sway::IpcMessage> message = reader.next()) {
            const std::optional<QByteArray> answer = answer_(*message);
            if (!answer)
                return;
            ::send(connection, answer->constData(), static_cast<std::size_t>(answer->size()),
                   MSG_NOSIGNAL);
        }
        const ssize_t count = ::recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return;
        reader.append({buffer.data(), count});
    }
}

}  // namespace kestrelbay::testing
