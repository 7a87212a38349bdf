#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QList>
#include <QString>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// The desktop as the user sees it and the window manager tells it, by the properties that
/// all of them keep, and the requests that a pager or taskbar would make.
class WindowManagerView {
public:
    using Window = xcb_window_t;
    enum class State { Withdrawn = 0, Normal = 1, Iconic = 3 };

    explicit WindowManagerView(const QString &displayName);

    /// All managed windows, front-most first.
    [[nodiscard]] std::vector<Window> stacking();
    /// Those of one class, front-most first.
    [[nodiscard]] std::vector<Window> windowsOf(const QString &windowClass);
    [[nodiscard]] Window active();
    /// Has the keyboard, itself or one of its children.
    [[nodiscard]] bool hasFocus(Window window);
    [[nodiscard]] State state(Window window);
    /// No value for a window that is on none or on all.
    [[nodiscard]] std::optional<std::uint32_t> desktopOf(Window window);
    [[nodiscard]] std::uint32_t currentDesktop();
    [[nodiscard]] std::uint32_t desktopCount();
    [[nodiscard]] QString windowClass(Window window);
    [[nodiscard]] QString title(Window window);
    [[nodiscard]] qint64 processId(Window window);
    /// The window by which the window manager shows that it runs; none when it
    /// does not.
    [[nodiscard]] Window managerWindow();
    /// On the screen, though perhaps behind others: on the current workspace and not minimised.
    [[nodiscard]] bool isShown(Window window);
    /// Of the desktop, above all windows of programs.
    [[nodiscard]] bool isPanel(Window window);
    /// The front-most of the shown windows that share a place with this one, itself included and
    /// panels apart; none when it is nowhere.
    [[nodiscard]] Window frontMostAt(Window window);
    /// Active, shown, and covered by no other window but panels.
    [[nodiscard]] bool isInFront(Window window);

    /// As "XTerm “title” 0x40000d".
    [[nodiscard]] QString describe(Window window);

    void activate(Window window);
    void minimise(Window window);
    void moveToDesktop(Window window, std::uint32_t desktop);
    void showDesktop(std::uint32_t desktop);
    void setDesktopCount(std::uint32_t count);
    void close(Window window);

    [[nodiscard]] XClient &client() { return client_; }

private:
    /// The window that the server stacks for it.
    [[nodiscard]] Window frameOf(Window window);
    [[nodiscard]] std::uint32_t rootNumber(const std::string &name, std::uint32_t otherwise);

    XClient client_;
};

}  // namespace kestrelbay::desktop
