#include "platform/linux/wayland/sway/windows/KeptWindows.h"

#include <algorithm>

#include "platform/linux/wayland/windows/WindowMatches.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {

void KeptWindows::setInformed(bool isInformed) {
    const std::lock_guard lock(mutex_);
    isInformed_ = isInformed;
    areKnown_ = false;
    ++moment_;
}

void KeptWindows::willChange() {
    const std::lock_guard lock(mutex_);
    areKnown_ = false;
    ++moment_;
}

void KeptWindows::takeIn(const QJsonObject &event) {
    const QString change = event["change"_L1].toString();
    const QJsonObject node = event["container"_L1].toObject();
    const std::int64_t id = node["id"_L1].toInteger();
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find(windows_, id, &SwayWindow::id);
    // Some programs call a window by its name only when it is there, of which nothing else tells.
    const bool isAsKept =
        found != windows_.end() && wayland::isToldAlike(found->facts, factsOf(node));
    const bool isFocus = change == "focus"_L1;
    const bool isOther =
        !isAsKept || change == "new"_L1 || change == "close"_L1 || change == "move"_L1;
    areKnown_ = areKnown_ && !isOther;
    if (isFocus || isOther)
        ++moment_;
    if (!isFocus)
        return;
    used_.note(id);
    for (SwayWindow &window : windows_)
        window.isFocused = window.id == id;
    if (found != windows_.end())
        std::rotate(windows_.begin(), found, found + 1);
}

std::uint64_t KeptWindows::moment() const {
    const std::lock_guard lock(mutex_);
    return moment_;
}

std::vector<SwayWindow> KeptWindows::takeIn(const QJsonObject &tree, std::uint64_t moment) {
    std::vector<SwayWindow> windows = windowsOf(tree);
    const std::lock_guard lock(mutex_);
    const bool isUpToDate = moment == moment_;
    for (const SwayWindow &window : windows) {
        if (window.isFocused && isUpToDate)
            used_.note(window.id);
    }
    used_.putInOrder(windows);
    windows_ = windows;
    areKnown_ = isInformed_ && isUpToDate && !tree.isEmpty();
    return windows;
}

std::optional<std::vector<SwayWindow>> KeptWindows::known() const {
    const std::lock_guard lock(mutex_);
    return areKnown_ ? std::optional(windows_) : std::nullopt;
}

bool KeptWindows::areKnown() const {
    const std::lock_guard lock(mutex_);
    return areKnown_;
}

bool KeptWindows::isLookDue() const {
    const std::lock_guard lock(mutex_);
    return isInformed_ && !areKnown_;
}

}  // namespace kestrelbay::sway
