#include "platform/linux/x11/keymap/X11KeyboardLayout.h"

#include <chrono>
#include <utility>

#include "platform/linux/x11/keymap/KeyboardState.h"

namespace kestrelbay::x11 {

namespace {

/// One change of the layout is told of in many events.
constexpr std::chrono::milliseconds kPause{20};

}  // namespace

X11KeyboardLayout::X11KeyboardLayout(const QString &displayName) : connection_(displayName) {
    if (!connection_.isUsable())
        return;
    const std::optional<std::uint8_t> event = watchKeymap(connection_.get());
    if (!event)
        return;
    changeEvent_ = *event;
    watchLayoutInUse(connection_.get());
    readTimer_.setSingleShot(true);
    QObject::connect(&readTimer_, &QTimer::timeout, &readTimer_, [this] { read(); });
    notifier_.emplace(connection_.fileDescriptor(), QSocketNotifier::Read);
    QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_, [this] { drain(); });
    read();
}

QString X11KeyboardLayout::printedOn(KeyCode keyCode) const {
    const auto found = caps_.find(keyCode);
    return found == caps_.end() ? QString() : found->second;
}

void X11KeyboardLayout::setChangeHandler(std::function<void()> handler) {
    handler_ = std::move(handler);
}

void X11KeyboardLayout::drain() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if ((event->response_type & 0x7fU) == changeEvent_ && !readTimer_.isActive())
            readTimer_.start(kPause);
    }
    if (!connection_.isUsable())
        notifier_->setEnabled(false);
}

void X11KeyboardLayout::read() {
    std::map<KeyCode, QString> caps = readKeyCaps(connection_.get());
    // Of what came with the answers the descriptor says nothing.
    drain();
    if (caps.empty() || caps == caps_)
        return;
    caps_ = std::move(caps);
    if (const auto handler = handler_)
        handler();
}

}  // namespace kestrelbay::x11
