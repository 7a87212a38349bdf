#include "platform/linux/wayland/sway/SwayEvents.h"

#include <utility>

#include <QPointer>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

SwayEvents::SwayEvents(QString socketPath) : socketPath_(std::move(socketPath)) {}

bool SwayEvents::begin() {
    if (isListening())
        return true;
    notifier_.reset();
    ipc_.emplace(socketPath_);
    if (!ipc_->subscribe({u"binding"_s, u"window"_s, u"workspace"_s}))
        return false;
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(this, &SwayEvents::listen, Qt::QueuedConnection);
    Q_EMIT begun();
    return true;
}

void SwayEvents::listen() {
    if (notifier_ || !isListening())
        return;
    notifier_.emplace(ipc_->descriptor(), QSocketNotifier::Read);
    connect(&*notifier_, &QSocketNotifier::activated, this, &SwayEvents::takeIn);
    // Some may have come with an answer.
    takeIn();
}

void SwayEvents::takeIn() {
    // Who is told may end this, or begin anew.
    const QPointer<SwayEvents> self(this);
    while (const std::optional<SwayIpc::Event> event = ipc_->nextEvent()) {
        Q_EMIT happened(*event);
        if (!self)
            return;
    }
    if (ipc_->isOpen())
        return;
    notifier_.reset();
    Q_EMIT ended();
}

}  // namespace kestrelbay::sway
