#include "app/UnseenWindows.h"

#include <utility>

#include "platform/SystemLog.h"
#include "settings/L.h"

namespace kestrelbay {

UnseenWindows::UnseenWindows(SystemLog &log, ShowToast showToast)
    : log_(log), showToast_(std::move(showToast)) {}

void UnseenWindows::opened(const QString &appPath) {
    const bool isFirst = openedOnce_.insert(appPath).second;
    if (isFirst || std::exchange(isSaid_, true))
        return;
    log_.write(
        QStringLiteral("KestrelBay [WARN] the desktop does not let programs see all windows; "
                       "hotkeys only open applications"));
    showToast_(L::windowsUnseen());
}

}  // namespace kestrelbay
