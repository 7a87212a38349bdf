#pragma once

#include <memory>
#include <optional>

#include <QColor>
#include <QRect>
#include <QString>

#include "desktop/session/Desktop.h"
#include "support/ChildProcess.h"

namespace kestrelbay::desktop {

/// A panel at the top of the screen with nothing but a tray in it, until it is
/// destroyed.
class TrayHost {
public:
    enum class Kind {
        Notifiers,  ///< draws icons and menus itself, as told over the session bus
        Embedding,  ///< has the programs' windows in it
    };
    enum class Shade { Dark, Light };

    /// Returns when icons can be put in it. Throws std::runtime_error.
    TrayHost(Desktop &desktop, Kind kind, Shade shade = Shade::Dark);
    ~TrayHost();
    TrayHost(const TrayHost &) = delete;
    TrayHost &operator=(const TrayHost &) = delete;

    /// Where it is on the screen.
    [[nodiscard]] QRect area();
    /// Where an icon is to be seen in it. None when there is no icon.
    [[nodiscard]] std::optional<QRect> icon();

private:
    void configurePanel(Shade shade) const;
    [[nodiscard]] std::optional<QRect> drawnIcon();
    [[nodiscard]] std::optional<QRect> embeddedIcon(xcb_window_t window);

    Desktop &desktop_;
    const Kind kind_;
    std::unique_ptr<testing::ChildProcess> process_;
};

}  // namespace kestrelbay::desktop
