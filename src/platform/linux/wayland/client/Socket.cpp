#include "platform/linux/wayland/client/Socket.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>

#include <QDir>
#include <QFile>

namespace kestrelbay::wayland {

QString socketPath(const QString &displayName) {
    return displayName.isEmpty()
               ? QString()
               : QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).filePath(displayName);
}

int connectedSocket(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.isEmpty() || name.size() >= std::ssize(address.sun_path)) {
        errno = ENOENT;
        return -1;
    }
    std::ranges::copy(name, std::begin(address.sun_path));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return -1;
    // Local sockets connect at once, or wait for room in the queue of a server that is stuck.
    if (::fcntl(descriptor, F_SETFL, O_NONBLOCK) == 0 &&
        ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0)
        return descriptor;
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return -1;
}

}  // namespace kestrelbay::wayland
