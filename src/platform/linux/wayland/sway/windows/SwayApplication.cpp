#include "platform/linux/wayland/sway/windows/SwayApplication.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "platform/linux/applications/matching/WindowSubrole.h"

namespace kestrelbay::sway {

namespace {

class SwayWindowElement final : public WindowElement {
public:
    SwayWindowElement(std::shared_ptr<SwayWindows> windows, std::size_t position)
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
    /// sway raises what gets the focus.
    bool raise() override { return true; }

private:
    const std::shared_ptr<SwayWindows> windows_;
    const std::size_t position_;
};

}  // namespace

std::vector<ApplicationGroup> groupApplications(const SwayPicture &picture) {
    ApplicationGrouping grouping;
    for (std::size_t i = 0; i < picture.windows.size(); ++i) {
        const KnownWindow &known = picture.windows[i];
        grouping.add(i, *known.facts, *known.matches, known.window.isFocused);
    }
    return grouping.take();
}

SwayWindows::SwayWindows(std::shared_ptr<SwayDesktop> desktop, const SwayPicture &picture,
                         const ApplicationGroup &group)
    : desktop_(std::move(desktop)) {
    for (const std::size_t window : group.windows) {
        if (picture.windows[window].facts->type != WindowType::Decoration)
            windows_.push_back(picture.windows[window]);
    }
}

SwayWindows::~SwayWindows() {
    if (!returning_.empty())
        focus(*returning_.begin());
}

std::vector<std::size_t> SwayWindows::listed() const {
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

bool SwayWindows::setHidden(std::size_t window, bool hidden) {
    if (!hidden) {
        if (windows_[window].window.isHidden)
            returning_.insert(window);
        return true;
    }
    returning_.erase(window);
    const bool isAsked = desktop_->hide(std::span(&windows_[window].window, 1));
    windows_[window].window.isHidden = true;
    return isAsked;
}

bool SwayWindows::focus(std::size_t window) {
    if (windows_[window].window.isHidden)
        returning_.insert(window);
    std::vector<SwayWindow> hidden;
    // The front-most last, so that they have their order again.
    for (auto returning = returning_.rbegin(); returning != returning_.rend(); ++returning) {
        hidden.push_back(windows_[*returning].window);
        windows_[*returning].window.isHidden = false;
    }
    returning_.clear();
    focused_ = window;
    return desktop_->bringForward(hidden, windows_[window].window.id);
}

bool SwayWindows::hideAll() {
    returning_.clear();
    focused_.reset();
    std::vector<SwayWindow> every;
    // The back-most first: the focus does not wander over those that go as well.
    std::transform(windows_.rbegin(), windows_.rend(), std::back_inserter(every),
                   [](const KnownWindow &known) { return known.window; });
    for (KnownWindow &known : windows_)
        known.window.isHidden = true;
    return !every.empty() && desktop_->hide(every);
}

bool SwayWindows::activate() {
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

SwayApplication::SwayApplication(const std::shared_ptr<SwayDesktop> &desktop,
                                 const SwayPicture &picture, const ApplicationGroup &group)
    : windows_(std::make_shared<SwayWindows>(desktop, picture, group)),
      pid_{group.pid},
      isActive_(group.active) {
    if (!group.entry)
        return;
    const DesktopEntry &entry = picture.index->entries()[*group.entry];
    bundleURL_ = QUrl::fromLocalFile(entry.path);
    bundleIdentifier_ = entry.id;
}

std::vector<std::unique_ptr<WindowElement>> SwayApplication::windows() const {
    std::vector<std::unique_ptr<WindowElement>> elements;
    for (const std::size_t position : windows_->listed())
        elements.push_back(std::make_unique<SwayWindowElement>(windows_, position));
    return elements;
}

}  // namespace kestrelbay::sway
