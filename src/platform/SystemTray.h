#pragma once

#include <functional>
#include <optional>

#include <QString>

namespace kestrelbay {

/// Where the desktop shows the icons of programs that run without a window: menu
/// bar, tray. Main thread.
class SystemTray {
public:
    virtual ~SystemTray() = default;

    /// Calls the handler once, at the latest from the event loop, as soon as an icon
    /// made with QSystemTrayIcon comes into view; never when there is no such area.
    /// To be asked before anything else asks Qt about trays: Qt remembers its first
    /// finding until the program ends.
    virtual void whenAvailable(std::function<void()> handler) = 0;

    /// Would such an icon be in view now?
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// Is the area dark, so that a light icon is needed? None where the system
    /// tints icons by itself.
    [[nodiscard]] virtual std::optional<bool> isDark() const = 0;

    /// Does the area draw the icon of this name, out of the icon theme, instead of the pixels
    /// it is sent, and in the colour that goes with its ground?
    [[nodiscard]] virtual bool tintsIcon(const QString &name) const = 0;

    /// Called whenever isDark() may have become another one.
    virtual void setDarkHandler(std::function<void()> handler) = 0;

    /// Has the system draw its own symbol of this name, 16 points high, in the icon that Qt
    /// shows, with what screen readers are to say of it (nothing when empty). To be called each
    /// time that Qt was given an icon, which stays where the system has no such symbol.
    virtual void drawSymbol(const QString &name, const QString &description) = 0;

    /// Does a click on the icon open its menu without the program's doing?
    [[nodiscard]] virtual bool opensMenus() const = 0;
};

}  // namespace kestrelbay
