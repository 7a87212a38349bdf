#pragma once

#include <optional>

#include <QMargins>
#include <QPoint>
#include <QRect>

namespace kestrelbay {

/// What the desktop can do with a window of this program that Qt has no call for.
/// Main thread. A window that is not there, or a desktop that cannot, is not an
/// error: then nothing happens.
class NativeWindow {
public:
    /// As QWidget::winId() gives it.
    using Id = quintptr;

    virtual ~NativeWindow() = default;

    /// Makes a window that was never shown one that never takes the focus, floats
    /// over others (NSFloatingWindowLevel, 3), is on every workspace and stays in
    /// view over full-screen windows (NSWindowCollectionBehavior canJoinAllSpaces and
    /// fullScreenAuxiliary, 257).
    virtual void makeFloatingPanel(Id window) = 0;

    /// Can a window be seen through? When it cannot, whatever is painted with less
    /// than full opacity comes out wrong.
    [[nodiscard]] virtual bool isTranslucencyShown() const = 0;

    /// Has what is behind the window show through blurred within a rounded rectangle
    /// (in device-independent pixels of the window), where the desktop blurs.
    virtual void setBehindWindowMaterial(Id window, const QRect &rectangle, int cornerRadius) = 0;

    /// Is what setBehindWindowMaterial() puts there a ground by itself, on which nothing else
    /// needs to be painted?
    [[nodiscard]] virtual bool isMaterialAGround() const = 0;

    /// Lets the content of a window that was never shown reach under its title bar, which has
    /// no ground and no title then, where the desktop can. The content keeps its size.
    virtual void extendContentUnderTitleBar(Id window) = 0;

    /// Cuts a window to a rounded rectangle (in device-independent pixels of the window)
    /// along the pixels of the screen, for desktops that show no translucency.
    virtual void cutToRoundedRectangle(Id window, const QRect &rectangle, int cornerRadius) = 0;

    /// How far the frame that the desktop puts around a window reaches beyond it, in device
    /// pixels. The window may still have to be shown. None where the desktop does not tell
    /// within a quarter of a second, for which this waits.
    [[nodiscard]] virtual QMargins frameMargins(Id window) const = 0;

    /// Gives a shown window of this program the focus and brings it before all others,
    /// whoever has the focus now; and into view, if it is on another workspace.
    virtual void bringProgramForward(Id window) = 0;

    /// The middle of the window that has the keyboard, or of its screen, in what the
    /// system lays the whole desktop out in: device pixels on X11, points on macOS. None
    /// when there is no such window.
    [[nodiscard]] virtual std::optional<QPoint> activeWindowCenter() const = 0;
};

}  // namespace kestrelbay
