#include "platform/linux/wayland/HotkeysClaim.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include <QFile>

namespace kestrelbay::wayland {

std::optional<HotkeysClaim> HotkeysClaim::take(const QString &path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC,
                                  S_IRUSR | S_IWUSR);
    HotkeysClaim claim(descriptor);
    if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return std::nullopt;
    return claim;
}

HotkeysClaim::~HotkeysClaim() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

HotkeysClaim::HotkeysClaim(HotkeysClaim &&other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)) {}

}  // namespace kestrelbay::wayland
