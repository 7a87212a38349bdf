#include "platform/linux/x11/windows/WindowEventPump.h"

#include <QTimer>

namespace kestrelbay::x11 {

WindowEventPump::WindowEventPump(WindowTracker &tracker)
    : tracker_(tracker),
      notifier_(tracker.windowSystem().connection().fileDescriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { takeIn(); });
}

void WindowEventPump::takeIn() {
    if (Clock::now() - lastPress_.load() < kPressLasts) {
        notifier_.setEnabled(false);
        QTimer::singleShot(kPressLasts, &notifier_, [this] { takeIn(); });
        return;
    }
    tracker_.processEvents();
    // A server that has gone leaves a descriptor that can be read forever.
    notifier_.setEnabled(tracker_.windowSystem().connection().isUsable());
}

}  // namespace kestrelbay::x11
