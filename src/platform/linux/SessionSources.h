#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QString>

#include "platform/DesktopExtension.h"
#include "platform/EventTap.h"
#include "platform/SystemLog.h"
#include "platform/linux/DisplayFacts.h"
#include "platform/linux/WindowSource.h"
#include "platform/linux/wayland/gnome/GnomeShellInstallation.h"
#include "platform/linux/wayland/gnome/ShellExtension.h"
#include "platform/linux/wayland/sway/SwayEvents.h"
#include "platform/linux/wayland/toplevels/ToplevelDesktop.h"

namespace kestrelbay {

/// Where hotkeys and windows come from in a session: of what the session offers, what can do most.
/// Nobody is asked before the first of these is called. Main thread.
class SessionSources {
public:
    /// The log has to outlive all that is made here.
    SessionSources(DisplayFacts facts, SystemLog &log);

    /// One that cannot be installed, and says why, where the session offers none. `displayLost` is
    /// called on the main thread when an X server has gone that hotkeys came from.
    [[nodiscard]] std::unique_ptr<EventTap> makeEventTap(std::function<void()> displayLost);
    /// One without windows where the session offers none.
    [[nodiscard]] std::unique_ptr<WindowSource> makeWindowSource();

    /// What the session can be given for its hotkeys and windows; null where that is nothing.
    [[nodiscard]] DesktopExtension *desktopExtension();

    /// What they are called in a report.
    [[nodiscard]] QString hotkeysInWords();
    [[nodiscard]] QString windowsInWords();
    [[nodiscard]] bool hasWindows();

private:
    struct HotkeysOffer {
        QString name;
        /// What it may overlook of the hotkeys of others, for a report.
        std::function<QString()> overlooked = [] { return QString(); };
        std::function<std::unique_ptr<EventTap>(std::function<void()> displayLost)> make;
    };
    struct WindowsOffer {
        QString name;
        bool areThere = true;
        std::function<std::unique_ptr<WindowSource>()> make;
    };

    [[nodiscard]] const HotkeysOffer &hotkeys();
    [[nodiscard]] const WindowsOffer &windows();

    // In the order in which they are asked. Only X's are for a session of X's.
    [[nodiscard]] std::optional<HotkeysOffer> hotkeysOfSway();
    [[nodiscard]] std::optional<HotkeysOffer> hotkeysOfPlasma();
    [[nodiscard]] std::optional<HotkeysOffer> hotkeysOfGnome();
    [[nodiscard]] std::optional<HotkeysOffer> hotkeysOfPortal();
    [[nodiscard]] HotkeysOffer hotkeysOfX() const;

    [[nodiscard]] std::optional<WindowsOffer> windowsOfSway();
    [[nodiscard]] std::optional<WindowsOffer> windowsOfGnome();
    [[nodiscard]] std::optional<WindowsOffer> windowsOfPlasma();
    /// Where KWin has not been told by our desktop entry that we may use its protocol.
    [[nodiscard]] std::optional<WindowsOffer> windowsOfKWin();
    [[nodiscard]] std::optional<WindowsOffer> windowsOfForeignToplevels();
    [[nodiscard]] WindowsOffer windowsOfX() const;

    [[nodiscard]] std::optional<WindowsOffer> windowsOfToplevels(
        wayland::ToplevelProtocol protocol) const;
    /// A Wayland session of that desktop?
    [[nodiscard]] bool isWaylandOf(QStringView desktop) const;
    /// Null where the session is none of GNOME's.
    [[nodiscard]] std::shared_ptr<const gnome::ShellExtension> gnomeExtension();
    /// Those of sway, for hotkeys and windows.
    [[nodiscard]] const std::shared_ptr<sway::SwayEvents> &swayEvents();
    /// In such a session only.
    [[nodiscard]] gnome::GnomeShellInstallation &gnomeInstallation();
    /// The same, but null as well where it is missing and the portal gives hotkeys without it.
    [[nodiscard]] std::shared_ptr<const gnome::ShellExtension> extensionInUse();
    /// Of its global shortcuts; 0 where there are none.
    [[nodiscard]] uint portalVersion();
    /// Empty where the session is none of sway's.
    [[nodiscard]] const QString &swayVersion();

    const DisplayFacts facts_;
    SystemLog &log_;
    std::shared_ptr<const gnome::ShellExtension> gnomeExtension_;
    std::optional<gnome::GnomeShellInstallation> gnomeInstallation_;
    std::optional<QString> swayVersion_;
    std::shared_ptr<sway::SwayEvents> swayEvents_;
    std::optional<uint> portalVersion_;
    std::optional<bool> isExtensionInUse_;
    std::optional<HotkeysOffer> hotkeys_;
    std::optional<WindowsOffer> windows_;
};

}  // namespace kestrelbay
