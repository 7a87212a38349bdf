#include "app/WindowRest.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace kestrelbay {

namespace {

/// Minimised ones as well; not the icon in an embedding tray, which is a window too.
bool isAnyInSight() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](const QWidget *window) {
        return window->isVisible() && window->testAttribute(Qt::WA_QuitOnClose);
    });
}

}  // namespace

WindowRest::WindowRest(Timers &timers, std::function<void()> begun)
    : timers_(timers), begun_(std::move(begun)) {
    qApp->installEventFilter(this);
    waitFor(kDelayOfStart);
}

void WindowRest::waitFor(std::chrono::seconds delay) {
    timer_ = timers_.once(delay, begun_);
}

bool WindowRest::eventFilter(QObject *watched, QEvent *event) {
    const bool isHidden = event->type() == QEvent::Hide;
    if ((isHidden || event->type() == QEvent::Show) && watched->isWidgetType() &&
        static_cast<QWidget *>(watched)->isWindow()) {
        // Much that is no window the user knows comes and goes: tool tips, menus, parts of a
        // window that is being made.
        if (isAnyInSight())
            timer_.reset();
        else if (isHidden)
            waitFor(kDelay);
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace kestrelbay
