#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

namespace kestrelbay::desktop {

/// The windows as the user sees them, and what a pager or a taskbar would do to them, under
/// whichever manager.
class WindowsView {
public:
    using Window = std::uint32_t;  ///< 0 for none

    virtual ~WindowsView() = default;

    /// Those of one class, or one Wayland application id, front-most first.
    [[nodiscard]] virtual std::vector<Window> windowsOf(const QString &windowClass) = 0;
    [[nodiscard]] virtual Window active() = 0;
    /// Has the keyboard.
    [[nodiscard]] virtual bool hasFocus(Window window) = 0;
    /// Put out of the user's way: minimised, or what the manager has instead.
    [[nodiscard]] virtual bool isMinimised(Window window) = 0;
    /// No value for a window that is on none or on all.
    [[nodiscard]] virtual std::optional<std::uint32_t> desktopOf(Window window) = 0;
    [[nodiscard]] virtual std::uint32_t currentDesktop() = 0;
    [[nodiscard]] virtual QString windowClass(Window window) = 0;
    [[nodiscard]] virtual QString title(Window window) = 0;
    [[nodiscard]] virtual qint64 processId(Window window) = 0;
    /// On the screen, though perhaps behind others: on the current workspace and not minimised.
    [[nodiscard]] virtual bool isShown(Window window) = 0;
    /// The front-most of the shown windows that share a place with this one, itself included and
    /// panels apart; none when it is nowhere.
    [[nodiscard]] virtual Window frontMostAt(Window window) = 0;
    /// Active, shown, and covered by no other window but panels.
    [[nodiscard]] bool isInFront(Window window);
    /// As "XTerm “title” 0x40000d".
    [[nodiscard]] QString describe(Window window);

    virtual void activate(Window window) = 0;
    virtual void minimise(Window window) = 0;
    virtual void moveToDesktop(Window window, std::uint32_t desktop) = 0;
    virtual void showDesktop(std::uint32_t desktop) = 0;
    virtual void close(Window window) = 0;

protected:
    WindowsView() = default;
    WindowsView(const WindowsView &) = default;
    WindowsView &operator=(const WindowsView &) = default;
};

}  // namespace kestrelbay::desktop
