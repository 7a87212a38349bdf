#include "desktop/sway/SwayView.h"

#include <algorithm>

namespace kestrelbay::desktop {

namespace {
constexpr const char *kScratchpad = "__i3_scratch";
}

std::optional<SwayWindow> SwayView::find(Window window) {
    const auto windows = session_.ipc().windows();
    const auto found = std::ranges::find(windows, window, &SwayWindow::id);
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

void SwayView::tell(Window window, const QString &command) {
    session_.ipc().command(QStringLiteral("[con_id=%1] %2").arg(window).arg(command));
}

std::vector<SwayView::Window> SwayView::windowsOf(const QString &application) {
    std::vector<Window> windows;
    for (const SwayWindow &window : session_.ipc().windows())
        if (window.application == application)
            windows.push_back(window.id);
    return windows;
}

SwayView::Window SwayView::active() {
    const auto windows = session_.ipc().windows();
    const auto found = std::ranges::find(windows, true, &SwayWindow::isFocused);
    return found == windows.end() ? Window{0} : found->id;
}

bool SwayView::hasFocus(Window window) {
    const auto found = find(window);
    if (!found || !found->isFocused)
        return false;
    // Keys reach a program on Xwayland only once its server has heard of the focus, too.
    return found->xWindow == 0 || session_.x().hasFocus(found->xWindow);
}

bool SwayView::isMinimised(Window window) {
    const auto found = find(window);
    return found && found->workspace == QLatin1String(kScratchpad);
}

std::optional<std::uint32_t> SwayView::desktopOf(Window window) {
    const auto found = find(window);
    if (!found || found->workspace == QLatin1String(kScratchpad))
        return std::nullopt;
    return found->workspace.toUInt() - 1;
}

std::uint32_t SwayView::currentDesktop() {
    return static_cast<std::uint32_t>(session_.ipc().workspace()) - 1;
}

QString SwayView::windowClass(Window window) {
    return find(window).value_or(SwayWindow{}).application;
}

QString SwayView::title(Window window) {
    return find(window).value_or(SwayWindow{}).title;
}

qint64 SwayView::processId(Window window) {
    return find(window).value_or(SwayWindow{}).processId;
}

bool SwayView::isShown(Window window) {
    return find(window).value_or(SwayWindow{}).isVisible;
}

SwayView::Window SwayView::frontMostAt(Window window) {
    return isShown(window) ? window : Window{0};
}

void SwayView::activate(Window window) {
    tell(window, QStringLiteral("focus"));
}

void SwayView::minimise(Window window) {
    tell(window, QStringLiteral("move scratchpad"));
}

void SwayView::moveToDesktop(Window window, std::uint32_t desktop) {
    tell(window, QStringLiteral("move container to workspace number %1").arg(desktop + 1));
}

void SwayView::showDesktop(std::uint32_t desktop) {
    session_.ipc().command(QStringLiteral("workspace number %1").arg(desktop + 1));
}

void SwayView::close(Window window) {
    tell(window, QStringLiteral("kill"));
}

}  // namespace kestrelbay::desktop
