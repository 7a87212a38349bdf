#include "platform/linux/wayland/sway/SwayClaim.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include <QFile>

namespace kestrelbay::sway {

std::optional<SwayClaim> SwayClaim::take(const QString &socketPath) {
    const QByteArray path = QFile::encodeName(socketPath) + ".kestrelbay";
    const int descriptor =
        ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    SwayClaim claim(descriptor);
    if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return std::nullopt;
    return claim;
}

SwayClaim::~SwayClaim() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

SwayClaim::SwayClaim(SwayClaim &&other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)) {}

}  // namespace kestrelbay::sway
