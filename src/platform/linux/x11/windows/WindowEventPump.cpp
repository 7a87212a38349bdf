#include "platform/linux/x11/windows/WindowEventPump.h"

namespace kestrelbay::x11 {

WindowEventPump::WindowEventPump(WindowMirror &mirror)
    : mirror_(mirror),
      notifier_(mirror.windowSystem().connection().fileDescriptor(), QSocketNotifier::Read) {
    resume_.setSingleShot(true);
    resume_.setInterval(kPressLasts);
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { takeIn(); });
    QObject::connect(&resume_, &QTimer::timeout, &notifier_, [this] { takeIn(); });
}

bool WindowEventPump::isPressGoingOn() const {
    const Clock::duration since(now() - lastPress_.load());
    return since < kPressLasts;
}

void WindowEventPump::takeIn() {
    if (isPressGoingOn()) {
        notifier_.setEnabled(false);
        resume_.start();
        return;
    }
    mirror_.processEvents();
    // A server that has gone leaves a descriptor that can be read forever.
    notifier_.setEnabled(mirror_.windowSystem().connection().isUsable());
}

}  // namespace kestrelbay::x11
