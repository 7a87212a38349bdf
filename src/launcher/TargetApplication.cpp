#include "launcher/TargetApplication.h"

#include "platform/Workspace.h"

namespace kestrelbay {

bool TargetApplication::isFileManager() {
    if (!isFileManager_) {
        const QString identifier = application_->bundleIdentifier();
        isFileManager_ = !identifier.isEmpty() && identifier == workspace_.fileManagerIdentifier();
    }
    return *isFileManager_;
}

TargetApplication::Windows TargetApplication::windows() const {
    if (application_->processIdentifier() < ProcessIdentifier{1})
        return {};
    return application_->windows();
}

std::vector<WindowElement *> TargetApplication::standardWindows(const Windows &windows) {
    std::vector<WindowElement *> standard;
    if (windows.empty())
        return standard;
    const bool isFiltered = isFileManager();
    standard.reserve(windows.size());
    for (const auto &window : windows) {
        if (!isFiltered || window->subrole() == kStandardWindowSubrole)
            standard.push_back(window.get());
    }
    return standard;
}

void TargetApplication::cycle(const std::vector<WindowElement *> &standardWindows) {
    if (standardWindows.size() < 2)
        return;
    WindowElement *const backmost = standardWindows.back();
    backmost->setMain();
    backmost->setFocused();
    activate();
}

void restoreMinimized(const TargetApplication::Windows &windows) {
    for (const auto &window : windows) {
        if (window->isMinimized() == true)
            window->setMinimized(false);
    }
}

}  // namespace kestrelbay
