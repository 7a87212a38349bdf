#include "platform/linux/desktop/QtNativeWindow.h"

#include <QGuiApplication>
#include <QWindow>

namespace kestrelbay {

void QtNativeWindow::bringProgramForward(Id window) {
    for (QWindow *const own : QGuiApplication::topLevelWindows()) {
        if (own->handle() != nullptr && own->winId() == window)
            own->requestActivate();
    }
}

}  // namespace kestrelbay
