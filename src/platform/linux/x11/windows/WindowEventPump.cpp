#include "platform/linux/x11/windows/WindowEventPump.h"

#include <QTimer>

namespace kestrelbay::x11 {

WindowEventPump::WindowEventPump(WindowMirror &mirror)
    : mirror_(mirror),
      notifier_(mirror.windowSystem().connection().fileDescriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { takeIn(); });
}

void WindowEventPump::takeIn() {
    if (Clock::now() - lastPress_.load() < kPressLasts) {
        notifier_.setEnabled(false);
        QTimer::singleShot(kPressLasts, &notifier_, [this] { takeIn(); });
        return;
    }
    mirror_.processEvents();
    // A server that has gone leaves a descriptor that can be read forever.
    notifier_.setEnabled(mirror_.windowSystem().connection().isUsable());
}

}  // namespace kestrelbay::x11
