#pragma once

#include <memory>
#include <optional>

#include <QSocketNotifier>
#include <QString>

#include "platform/NativeWindow.h"
#include "platform/linux/x11/connection/WindowSystem.h"
#include "platform/linux/x11/panels/FloatingPanels.h"

namespace kestrelbay::x11 {

/// On a connection of its own, which the main loop reads. To be made with a
/// QCoreApplication. Without a server nothing happens.
///
/// Panels are windows with Qt::BypassWindowManagerHint: the window manager leaves them
/// alone, so they are in view on every workspace and never get the focus. Not with
/// Qt::ToolTip: those get another native window when they are first shown, which is
/// then no panel.
class X11NativeWindow final : public NativeWindow {
public:
    explicit X11NativeWindow(const QString &displayName);
    ~X11NativeWindow() override;
    X11NativeWindow(const X11NativeWindow &) = delete;
    X11NativeWindow &operator=(const X11NativeWindow &) = delete;

    void makeFloatingPanel(Id window) override;
    /// Asks the server every time: a compositing manager may start or end any time.
    [[nodiscard]] bool isTranslucencyShown() const override;
    void setBehindWindowMaterial(Id window, const QRect &rectangle, int cornerRadius) override;
    /// Few desktops blur, and what is blurred may be of any colour.
    [[nodiscard]] bool isMaterialAGround() const override { return false; }
    /// Title bars are the window manager's.
    void extendContentUnderTitleBar(Id /*window*/) override {}
    void cutToRoundedRectangle(Id window, const QRect &rectangle, int cornerRadius) override;
    [[nodiscard]] QMargins frameMargins(Id window) const override;
    /// A window that was just shown follows as soon as it is in the window manager's
    /// hands.
    void bringProgramForward(Id window) override;
    [[nodiscard]] std::optional<QPoint> activeWindowCenter() const override;

private:
    class WindowForward;

    void drain();
    void drainLater() const;

    WindowSystem system_;
    FloatingPanels panels_;
    std::unique_ptr<WindowForward> forward_;
    xcb_atom_t compositingManager_ = XCB_ATOM_NONE;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace kestrelbay::x11
