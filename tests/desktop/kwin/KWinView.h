#pragma once

#include <optional>
#include <vector>

#include <QRect>
#include <QString>

#include "desktop/display/WindowsView.h"
#include "desktop/kwin/KWinSession.h"

namespace kestrelbay::desktop {

/// Windows as KWin's scripts see them, their classes in small letters, as KWin has those of X.
class KWinView : public WindowsView {
public:
    explicit KWinView(KWinSession &session) : session_(session) {}

    [[nodiscard]] std::vector<Window> windowsOf(const QString &windowClass) override;
    [[nodiscard]] Window active() override;
    [[nodiscard]] bool hasFocus(Window window) override { return active() == window; }
    [[nodiscard]] bool isMinimised(Window window) override;
    [[nodiscard]] std::optional<std::uint32_t> desktopOf(Window window) override;
    [[nodiscard]] std::uint32_t currentDesktop() override;
    [[nodiscard]] QString windowClass(Window window) override;
    [[nodiscard]] QString title(Window window) override;
    [[nodiscard]] qint64 processId(Window window) override;
    [[nodiscard]] bool isShown(Window window) override;
    [[nodiscard]] Window frontMostAt(Window window) override;

    void activate(Window window) override;
    void minimise(Window window) override;
    void moveToDesktop(Window window, std::uint32_t desktop) override;
    void showDesktop(std::uint32_t desktop) override;
    void close(Window window) override;

    /// What KWin calls a window that was seen before.
    [[nodiscard]] const QString &nameOf(Window window) const { return names_.at(window - 1); }

private:
    struct Info {
        Window id = 0;
        QString windowClass = {};
        QString title = {};
        qint64 processId = 0;
        bool isActive = false;
        bool isMinimised = false;
        /// 0 for all of them.
        std::uint32_t desktop = 0;
        QRect place = {};
    };

    /// The front-most first.
    [[nodiscard]] std::vector<Info> read();
    [[nodiscard]] Info find(Window window);
    /// A statement about "w", which is the window.
    void tell(Window window, const QString &statement);

    KWinSession &session_;
    /// KWin's own names of windows, and ours: from 1 on.
    std::vector<QString> names_;
};

}  // namespace kestrelbay::desktop
