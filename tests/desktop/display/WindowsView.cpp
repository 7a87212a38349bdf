#include "desktop/display/WindowsView.h"

namespace kestrelbay::desktop {

bool WindowsView::isInFront(Window window) {
    return active() == window && isShown(window) && frontMostAt(window) == window;
}

QString WindowsView::describe(Window window) {
    if (window == 0)
        return QStringLiteral("no window");
    return QStringLiteral("%1 “%2” 0x%3")
        .arg(windowClass(window), title(window), QString::number(window, 16));
}

}  // namespace kestrelbay::desktop
