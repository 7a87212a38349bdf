#include "desktop/display/WindowManagerView.h"

#include <algorithm>
#include <functional>
#include <map>

namespace kestrelbay::desktop {

namespace {
constexpr std::uint32_t kFromPager = 2;  // EWMH source indication
constexpr std::uint32_t kOnAllDesktops = 0xFFFFFFFF;
}  // namespace

WindowManagerView::WindowManagerView(const QString &displayName) : client_(displayName) {}

std::uint32_t WindowManagerView::rootNumber(const std::string &name, std::uint32_t otherwise) {
    const auto values = client_.numbers(client_.root(), name);
    return values.empty() ? otherwise : values.front();
}

std::vector<WindowManagerView::Window> WindowManagerView::stacking() {
    auto windows = client_.numbers(client_.root(), "_NET_CLIENT_LIST");
    // The order that some window managers tell is old, or none. The server's is what is seen.
    const std::vector<Window> bottomUp = client_.children(client_.root());
    std::map<Window, std::ptrdiff_t> height;
    for (const Window window : windows)
        height[window] = std::ranges::find(bottomUp, frameOf(window)) - bottomUp.begin();
    std::ranges::stable_sort(windows, std::greater(), [&](Window w) { return height[w]; });
    return windows;
}

WindowManagerView::Window WindowManagerView::frameOf(Window window) {
    for (Window parent = window; parent != XCB_NONE && parent != client_.root();
         parent = client_.parent(window))
        window = parent;
    return window;
}

std::vector<WindowManagerView::Window> WindowManagerView::windowsOf(const QString &windowClass) {
    auto windows = stacking();
    std::erase_if(windows, [&](Window w) { return this->windowClass(w) != windowClass; });
    return windows;
}

WindowManagerView::Window WindowManagerView::active() {
    return rootNumber("_NET_ACTIVE_WINDOW", XCB_NONE);
}

bool WindowManagerView::hasFocus(Window window) {
    return client_.hasFocus(window);
}

WindowManagerView::State WindowManagerView::state(Window window) {
    const auto values = client_.numbers(window, "WM_STATE");
    return values.empty() ? State::Withdrawn : static_cast<State>(values.front());
}

bool WindowManagerView::isMinimised(Window window) {
    return state(window) == State::Iconic;
}

std::optional<std::uint32_t> WindowManagerView::desktopOf(Window window) {
    const auto values = client_.numbers(window, "_NET_WM_DESKTOP");
    if (values.empty() || values.front() == kOnAllDesktops)
        return std::nullopt;
    return values.front();
}

std::uint32_t WindowManagerView::currentDesktop() {
    return rootNumber("_NET_CURRENT_DESKTOP", 0);
}

std::uint32_t WindowManagerView::desktopCount() {
    return rootNumber("_NET_NUMBER_OF_DESKTOPS", 1);
}

QString WindowManagerView::windowClass(Window window) {
    const auto parts = client_.text(window, "WM_CLASS").split('\0');
    return parts.size() > 1 ? QString::fromUtf8(parts[1]) : QString();
}

QString WindowManagerView::title(Window window) {
    const QByteArray title = client_.text(window, "_NET_WM_NAME");
    return QString::fromUtf8(title.isEmpty() ? client_.text(window, "WM_NAME") : title);
}

qint64 WindowManagerView::processId(Window window) {
    const auto values = client_.numbers(window, "_NET_WM_PID");
    return values.empty() ? 0 : values.front();
}

WindowManagerView::Window WindowManagerView::managerWindow() {
    const Window window = rootNumber("_NET_SUPPORTING_WM_CHECK", XCB_NONE);
    const auto itself = client_.numbers(window, "_NET_SUPPORTING_WM_CHECK");
    return !itself.empty() && itself.front() == window ? window : Window{XCB_NONE};
}

bool WindowManagerView::isShown(Window window) {
    return state(window) == State::Normal && client_.isViewable(window) &&
           desktopOf(window).value_or(currentDesktop()) == currentDesktop();
}

WindowManagerView::Window WindowManagerView::frontMostAt(Window window) {
    const QRect place = client_.area(window);
    // A window of another workspace may be higher up.
    const auto windows = stacking();
    const auto first = std::ranges::find_if(windows, [&](Window other) {
        return isShown(other) && !isPanel(other) && client_.area(other).intersects(place);
    });
    return first == windows.end() ? Window{XCB_NONE} : *first;
}

bool WindowManagerView::isPanel(Window window) {
    const auto types = client_.numbers(window, "_NET_WM_WINDOW_TYPE");
    return std::ranges::count(types, client_.atom("_NET_WM_WINDOW_TYPE_DOCK")) != 0;
}

void WindowManagerView::activate(Window window) {
    client_.ask(window, "_NET_ACTIVE_WINDOW", {kFromPager, client_.serverTime(), 0, 0, 0});
}

void WindowManagerView::minimise(Window window) {
    client_.ask(window, "WM_CHANGE_STATE", {static_cast<std::uint32_t>(State::Iconic), 0, 0, 0, 0});
}

void WindowManagerView::moveToDesktop(Window window, std::uint32_t desktop) {
    client_.ask(window, "_NET_WM_DESKTOP", {desktop, kFromPager, 0, 0, 0});
}

void WindowManagerView::showDesktop(std::uint32_t desktop) {
    client_.ask(client_.root(), "_NET_CURRENT_DESKTOP", {desktop, client_.serverTime(), 0, 0, 0});
}

void WindowManagerView::setDesktopCount(std::uint32_t count) {
    client_.ask(client_.root(), "_NET_NUMBER_OF_DESKTOPS", {count, 0, 0, 0, 0});
}

void WindowManagerView::close(Window window) {
    client_.ask(window, "_NET_CLOSE_WINDOW", {client_.serverTime(), kFromPager, 0, 0, 0});
}

}  // namespace kestrelbay::desktop
