#include "platform/linux/bus/SessionBus.h"

namespace kestrelbay {

QDBusConnection SessionBus::connection() {
    // Qt opens this one once and for all.
    QDBusConnection shared = QDBusConnection::sessionBus();
    if (shared.isConnected())
        return shared;
    const std::lock_guard lock(mutex_);
    if (!own_ || !own_->get().isConnected())
        own_.emplace();
    return own_->get();
}

}  // namespace kestrelbay
