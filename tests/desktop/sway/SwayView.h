#pragma once

#include <optional>

#include "desktop/display/WindowsView.h"
#include "desktop/sway/SwaySession.h"

namespace kestrelbay::desktop {

/// Windows as sway tells them. They are minimised to the scratchpad; the desktops are its
/// workspaces, by their numbers less one.
class SwayView : public WindowsView {
public:
    explicit SwayView(SwaySession &session) : session_(session) {}

    [[nodiscard]] std::vector<Window> windowsOf(const QString &application) override;
    [[nodiscard]] Window active() override;
    [[nodiscard]] bool hasFocus(Window window) override;
    [[nodiscard]] bool isMinimised(Window window) override;
    [[nodiscard]] std::optional<std::uint32_t> desktopOf(Window window) override;
    [[nodiscard]] std::uint32_t currentDesktop() override;
    [[nodiscard]] QString windowClass(Window window) override;
    [[nodiscard]] QString title(Window window) override;
    [[nodiscard]] qint64 processId(Window window) override;
    [[nodiscard]] bool isShown(Window window) override;
    /// Floating windows stay above the others, whichever is used. So what is in view counts.
    [[nodiscard]] Window frontMostAt(Window window) override;

    void activate(Window window) override;
    void minimise(Window window) override;
    void moveToDesktop(Window window, std::uint32_t desktop) override;
    void showDesktop(std::uint32_t desktop) override;
    void close(Window window) override;

private:
    [[nodiscard]] std::optional<SwayWindow> find(Window window);
    void tell(Window window, const QString &command);

    SwaySession &session_;
};

}  // namespace kestrelbay::desktop
