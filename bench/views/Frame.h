#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace kestrelbay {

/// Has the window painted as far as it needs it, now instead of with the next frame.
inline void paintFrame(QWidget &window) {
    // A window that was just shown is painted only once the platform says it is there.
    QCoreApplication::processEvents();
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &request);
}

}  // namespace kestrelbay
