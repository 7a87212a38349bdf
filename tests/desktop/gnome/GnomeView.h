#pragma once

#include <QJsonObject>

#include "desktop/display/WindowsView.h"
#include "desktop/gnome/GnomeSession.h"

namespace kestrelbay::desktop {

/// Windows as GNOME Shell itself has them, by their numbers in the order of their making.
class GnomeView : public WindowsView {
public:
    explicit GnomeView(GnomeSession &session) : session_(session) {}

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
    [[nodiscard]] Window frontMostAt(Window window) override;

    void activate(Window window) override;
    void minimise(Window window) override;
    void moveToDesktop(Window window, std::uint32_t desktop) override;
    void showDesktop(std::uint32_t desktop) override;
    void close(Window window) override;

private:
    /// What this expression is of a window, which it calls "it".
    [[nodiscard]] QJsonValue of(Window window, const QString &expression);
    void tell(Window window, const QString &statement);

    GnomeSession &session_;
};

}  // namespace kestrelbay::desktop
