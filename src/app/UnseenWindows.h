#pragma once

#include <functional>
#include <set>

#include <QString>

namespace kestrelbay {

class SystemLog;

/// Where the desktop keeps windows to itself, says so: once, and not before a hotkey has opened an
/// application anew that it might have brought forward, hidden or cycled. Main thread.
class UnseenWindows {
public:
    using ShowToast = std::function<void(const QString &message)>;

    UnseenWindows(SystemLog &log, ShowToast showToast);

    /// A hotkey has opened this application without knowing whether it was running.
    void opened(const QString &appPath);

private:
    SystemLog &log_;
    const ShowToast showToast_;
    std::set<QString> openedOnce_;
    bool isSaid_ = false;
};

}  // namespace kestrelbay
