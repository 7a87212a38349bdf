#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QList>
#include <QString>

#include "desktop/display/WindowsView.h"
#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// The desktop as the user sees it and the window manager tells it, by the properties that
/// all of them keep, and the requests that a pager or taskbar would make.
class WindowManagerView : public WindowsView {
public:
    enum class State { Withdrawn = 0, Normal = 1, Iconic = 3 };

    explicit WindowManagerView(const QString &displayName);

    /// All managed windows, front-most first.
    [[nodiscard]] std::vector<Window> stacking();
    [[nodiscard]] std::vector<Window> windowsOf(const QString &windowClass) override;
    [[nodiscard]] Window active() override;
    /// Itself or one of its children.
    [[nodiscard]] bool hasFocus(Window window) override;
    [[nodiscard]] State state(Window window);
    [[nodiscard]] bool isMinimised(Window window) override;
    [[nodiscard]] std::optional<std::uint32_t> desktopOf(Window window) override;
    [[nodiscard]] std::uint32_t currentDesktop() override;
    [[nodiscard]] std::uint32_t desktopCount();
    [[nodiscard]] QString windowClass(Window window) override;
    [[nodiscard]] QString title(Window window) override;
    [[nodiscard]] qint64 processId(Window window) override;
    /// The window by which the window manager shows that it runs; none when it
    /// does not.
    [[nodiscard]] Window managerWindow();
    [[nodiscard]] bool isShown(Window window) override;
    /// Of the desktop, above all windows of programs.
    [[nodiscard]] bool isPanel(Window window);
    [[nodiscard]] Window frontMostAt(Window window) override;

    void activate(Window window) override;
    void minimise(Window window) override;
    void moveToDesktop(Window window, std::uint32_t desktop) override;
    void showDesktop(std::uint32_t desktop) override;
    void setDesktopCount(std::uint32_t count);
    void close(Window window) override;

    [[nodiscard]] XClient &client() { return client_; }

private:
    /// The window that the server stacks for it.
    [[nodiscard]] Window frameOf(Window window);
    [[nodiscard]] std::uint32_t rootNumber(const std::string &name, std::uint32_t otherwise);

    XClient client_;
};

}  // namespace kestrelbay::desktop
