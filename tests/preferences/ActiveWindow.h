#pragma once

#include <QTest>
#include <QWidget>

namespace kestrelbay {

/// Gives the keyboard to a window that is shown, and waits until it has it. Windows take
/// it from each other on the offscreen platform too.
[[nodiscard]] inline bool activate(QWidget &window) {
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

}  // namespace kestrelbay
