#include "platform/linux/LinuxRunningApplication.h"

#include <utility>

#include "platform/linux/x11/windows/ApplicationWindows.h"

namespace kestrelbay::x11 {

namespace {

class LinuxWindowElement : public WindowElement {
public:
    LinuxWindowElement(std::shared_ptr<ApplicationWindows> windows, std::size_t position)
        : windows_(std::move(windows)), position_(position) {}

    [[nodiscard]] std::optional<QString> subrole() const override {
        if (!windows_->state(position_))
            return std::nullopt;
        switch (windows_->type(position_)) {
            case WindowType::Normal:
                return QString(kStandardWindowSubrole);
            case WindowType::Dialog:
                return QStringLiteral("AXDialog");
            case WindowType::Utility:
                return QStringLiteral("AXFloatingWindow");
            case WindowType::Decoration:
                break;
        }
        return QStringLiteral("AXUnknown");
    }

    [[nodiscard]] std::optional<bool> isMinimized() const override {
        const std::optional<WindowState> state = windows_->state(position_);
        return state ? std::optional(state->minimized) : std::nullopt;
    }

    bool setMinimized(bool minimized) override {
        return windows_->setMinimized(position_, minimized);
    }

    bool setMain() override {
        windows_->setMain(position_);
        return true;
    }

    bool setFocused() override { return windows_->focus(position_); }
    bool raise() override { return windows_->raise(position_); }

private:
    std::shared_ptr<ApplicationWindows> windows_;
    std::size_t position_;
};

}  // namespace

LinuxRunningApplication::LinuxRunningApplication(std::shared_ptr<WindowMirror> mirror,
                                                 const DesktopPicture &picture,
                                                 const ApplicationGroup &group)
    : pid_(group.pid > 0 ? ProcessIdentifier{group.pid} : kRemoteProcess),
      active_(group.active),
      windows_(std::make_shared<ApplicationWindows>(std::move(mirror), picture, group)) {
    if (!group.entry)
        return;
    const DesktopEntry &entry = picture.index->entries()[*group.entry];
    bundleURL_ = QUrl::fromLocalFile(entry.path);
    bundleIdentifier_ = entry.id;
}

LinuxRunningApplication::~LinuxRunningApplication() = default;

bool LinuxRunningApplication::isActive() const {
    return active_ && !windows_->isActiveOneMinimized();
}

std::vector<std::unique_ptr<WindowElement>> LinuxRunningApplication::windows() const {
    std::vector<std::unique_ptr<WindowElement>> elements;
    for (const std::size_t position : windows_->listed())
        elements.push_back(std::make_unique<LinuxWindowElement>(windows_, position));
    return elements;
}

bool LinuxRunningApplication::hide() {
    return windows_->minimizeAll();
}

bool LinuxRunningApplication::activate(ActivationOption) {
    return windows_->activate();
}

}  // namespace kestrelbay::x11
