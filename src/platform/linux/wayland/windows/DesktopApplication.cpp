#include "platform/linux/wayland/windows/DesktopApplication.h"

#include <algorithm>
#include <span>
#include <utility>

#include "platform/linux/applications/matching/WindowSubrole.h"

namespace kestrelbay::wayland {

namespace {

class DesktopWindowElement final : public WindowElement {
public:
    DesktopWindowElement(std::shared_ptr<ApplicationWindows> windows, std::size_t position)
        : windows_(std::move(windows)), position_(position) {}

    [[nodiscard]] std::optional<QString> subrole() const override {
        return subroleOf(windows_->all()[position_].facts->type);
    }
    [[nodiscard]] std::optional<bool> isMinimized() const override {
        return windows_->isHidden(position_);
    }
    bool setMinimized(bool minimized) override { return windows_->setHidden(position_, minimized); }
    bool setMain() override {
        windows_->setMain(position_);
        return true;
    }
    bool setFocused() override { return windows_->focus(position_); }
    /// Compositors raise what gets the focus.
    bool raise() override { return true; }

private:
    const std::shared_ptr<ApplicationWindows> windows_;
    const std::size_t position_;
};

}  // namespace

std::vector<ApplicationGroup> groupApplications(const Picture &picture) {
    ApplicationGrouping grouping;
    for (std::size_t i = 0; i < picture.windows.size(); ++i) {
        const KnownWindow &known = picture.windows[i];
        grouping.add(i, *known.facts, *known.matches, known.window.isFocused);
    }
    return grouping.take();
}

ApplicationWindows::ApplicationWindows(std::shared_ptr<Desktop> desktop, const Picture &picture,
                                       const ApplicationGroup &group)
    : desktop_(std::move(desktop)) {
    for (const std::size_t window : group.windows) {
        if (picture.windows[window].facts->type != WindowType::Decoration)
            windows_.push_back(picture.windows[window]);
    }
}

ApplicationWindows::~ApplicationWindows() {
    if (!returning_.empty())
        focus(*returning_.begin());
}

std::vector<std::size_t> ApplicationWindows::listed() const {
    std::vector<std::size_t> ordinary;
    std::vector<std::size_t> every;
    for (std::size_t i = 0; i < windows_.size(); ++i) {
        every.push_back(i);
        const WindowFacts &facts = *windows_[i].facts;
        if (!facts.isTransient() && facts.type != WindowType::Utility)
            ordinary.push_back(i);
    }
    return ordinary.empty() ? every : ordinary;
}

bool ApplicationWindows::setHidden(std::size_t window, bool hidden) {
    if (!hidden) {
        if (windows_[window].window.isHidden)
            returning_.insert(window);
        return true;
    }
    returning_.erase(window);
    const bool isAsked = desktop_->hide(std::span(&windows_[window].window.id, 1));
    windows_[window].window.isHidden = true;
    return isAsked;
}

bool ApplicationWindows::focus(std::size_t window) {
    if (windows_[window].window.isHidden)
        returning_.insert(window);
    std::vector<std::int64_t> hidden;
    // The front-most last, so that they have their order again.
    for (auto returning = returning_.rbegin(); returning != returning_.rend(); ++returning) {
        hidden.push_back(windows_[*returning].window.id);
        windows_[*returning].window.isHidden = false;
    }
    returning_.clear();
    focused_ = window;
    return desktop_->bringForward(hidden, windows_[window].window.id);
}

bool ApplicationWindows::hideAll() {
    returning_.clear();
    focused_.reset();
    std::vector<std::int64_t> shown;
    // The back-most first: the focus does not wander over those that go as well.
    for (auto known = windows_.rbegin(); known != windows_.rend(); ++known) {
        if (!known->window.isHidden)
            shown.push_back(known->window.id);
        known->window.isHidden = true;
    }
    return !windows_.empty() && desktop_->hide(shown);
}

bool ApplicationWindows::activate() {
    if (main_ && focused_ == main_)
        return true;
    const std::vector<std::size_t> list = listed();
    if (list.empty())
        return false;
    // Those that are not listed went with the others, and come with them.
    for (std::size_t i = 0; i < windows_.size(); ++i) {
        if (windows_[i].window.isHidden && std::ranges::find(list, i) == list.end())
            returning_.insert(i);
    }
    return focus(main_.value_or(list.front()));
}

DesktopApplication::DesktopApplication(const std::shared_ptr<Desktop> &desktop,
                                       const Picture &picture, const ApplicationGroup &group)
    : windows_(std::make_shared<ApplicationWindows>(desktop, picture, group)),
      process_(group.process()),
      isActive_(group.active) {
    if (!group.entry)
        return;
    const DesktopEntry &entry = picture.index->entries()[*group.entry];
    bundleURL_ = QUrl::fromLocalFile(entry.path);
    bundleIdentifier_ = entry.id;
}

std::vector<std::unique_ptr<WindowElement>> DesktopApplication::windows() const {
    std::vector<std::unique_ptr<WindowElement>> elements;
    for (const std::size_t position : windows_->listed())
        elements.push_back(std::make_unique<DesktopWindowElement>(windows_, position));
    return elements;
}

}  // namespace kestrelbay::wayland
