#include "platform/linux/SessionSources.h"

#include <utility>

#include <QDir>
#include <QStandardPaths>
#include <QStringList>

#include "platform/linux/WaylandWindowSource.h"
#include "platform/linux/X11WindowSource.h"
#include "platform/linux/wayland/client/Socket.h"
#include "platform/linux/wayland/gnome/GnomeEventTap.h"
#include "platform/linux/wayland/gnome/windows/GnomeDesktop.h"
#include "platform/linux/wayland/keymap/WaylandKeymap.h"
#include "platform/linux/wayland/plasma/KGlobalAccelEventTap.h"
#include "platform/linux/wayland/plasma/windows/KWinDesktop.h"
#include "platform/linux/wayland/portal/PortalEventTap.h"
#include "platform/linux/wayland/portal/ShortcutsSession.h"
#include "platform/linux/wayland/sway/SwayEventTap.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/wayland/sway/UserConfiguration.h"
#include "platform/linux/wayland/sway/windows/SwayDesktop.h"
#include "platform/linux/x11/keyboard/XEventTap.h"
#include "platform/linux/x11/keymap/KeyboardState.h"

namespace kestrelbay {

namespace {

QString nameOf(const gnome::ShellExtension &extension) {
    const auto name = QStringLiteral("KestrelBay's extension of GNOME Shell");
    return extension.isThere() ? name : name + QStringLiteral(", which is not enabled");
}

}  // namespace

SessionSources::SessionSources(DisplayFacts facts, SystemLog &log)
    : facts_(std::move(facts)), log_(log) {}

std::unique_ptr<EventTap> SessionSources::makeEventTap(std::function<void()> displayLost) {
    return hotkeys().make(std::move(displayLost));
}

std::unique_ptr<WindowSource> SessionSources::makeWindowSource() {
    return windows().make();
}

DesktopExtension *SessionSources::desktopExtension() {
    return gnomeExtension() ? &gnomeInstallation() : nullptr;
}

QString SessionSources::hotkeysInWords() {
    const QString overlooked = hotkeys().overlooked();
    return overlooked.isEmpty() ? hotkeys().name
                                : QStringLiteral(
                                      "%1, but what it binds by these lines is not known: "
                                      "%2")
                                      .arg(hotkeys().name, overlooked);
}

QString SessionSources::windowsInWords() {
    return windows().name;
}

bool SessionSources::hasWindows() {
    return windows().areThere;
}

const SessionSources::HotkeysOffer &SessionSources::hotkeys() {
    for (const auto offer : {&SessionSources::hotkeysOfSway, &SessionSources::hotkeysOfPlasma,
                             &SessionSources::hotkeysOfGnome, &SessionSources::hotkeysOfPortal}) {
        if (!hotkeys_)
            hotkeys_ = (this->*offer)();
    }
    if (!hotkeys_)
        hotkeys_ = hotkeysOfX();
    return *hotkeys_;
}

const SessionSources::WindowsOffer &SessionSources::windows() {
    for (const auto offer : {&SessionSources::windowsOfSway, &SessionSources::windowsOfGnome,
                             &SessionSources::windowsOfPlasma, &SessionSources::windowsOfKWin,
                             &SessionSources::windowsOfForeignToplevels}) {
        if (!windows_)
            windows_ = (this->*offer)();
    }
    if (!windows_)
        windows_ = windowsOfX();
    return *windows_;
}

std::optional<SessionSources::HotkeysOffer> SessionSources::hotkeysOfSway() {
    if (swayVersion().isEmpty())
        return std::nullopt;
    return HotkeysOffer{
        .name = QStringLiteral("bindings of sway %1").arg(swayVersion()),
        .overlooked = [] { return sway::unreadInConfiguration(sway::socketOfSession()); },
        .make =
            [this](const std::function<void()> &) {
                return std::make_unique<sway::SwayEventTap>(swayEvents());
            },
    };
}

std::optional<SessionSources::HotkeysOffer> SessionSources::hotkeysOfPortal() {
    if (portalVersion() == 0)
        return std::nullopt;
    return HotkeysOffer{
        .name = QStringLiteral("the desktop portal's global shortcuts, version %1")
                    .arg(portalVersion()),
        .make =
            [name = facts_.xName,
             kept = isWaylandOf(u"GNOME") ? wayland::KeptKeys::Left : wayland::KeptKeys::AskedFor](
                const std::function<void()> &) {
                return std::make_unique<portal::PortalEventTap>(
                    [name] { return x11::readSymbolNames(name); }, kept);
            },
    };
}

std::optional<SessionSources::HotkeysOffer> SessionSources::hotkeysOfPlasma() {
    if (!isWaylandOf(u"KDE"))
        return std::nullopt;
    return HotkeysOffer{
        .name = QStringLiteral("global shortcuts of Plasma"),
        .make =
            [path = wayland::socketPath(facts_.waylandName)](const std::function<void()> &) {
                const QDir runtime(
                    QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
                return std::make_unique<plasma::KGlobalAccelEventTap>(
                    plasma::KGlobalAccelEventTap::Settings{
                        .claimPath =
                            runtime.filePath(QStringLiteral("kestrelbay-global-shortcuts")),
                        .keymap = [path](std::function<void()> changed) {
                            return std::make_unique<wayland::WaylandKeymap>(path,
                                                                            std::move(changed));
                        }});
            },
    };
}

std::optional<SessionSources::HotkeysOffer> SessionSources::hotkeysOfGnome() {
    const auto extension = extensionInUse();
    if (!extension)
        return std::nullopt;
    return HotkeysOffer{
        .name = nameOf(*extension),
        .make =
            [this, extension](const std::function<void()> &) {
                gnomeInstallation().renew();
                return std::make_unique<gnome::GnomeEventTap>(extension);
            },
    };
}

SessionSources::HotkeysOffer SessionSources::hotkeysOfX() const {
    return {
        .name = facts_.isWaylandSession ? QStringLiteral("none in this session")
                                        : QStringLiteral("the X server"),
        .make =
            [this](std::function<void()> displayLost) {
                x11::XEventTap::Settings settings;
                settings.displayName = facts_.xName;
                settings.isX11Session = !facts_.isWaylandSession;
                settings.displayLost = std::move(displayLost);
                return std::make_unique<x11::XEventTap>(std::move(settings));
            },
    };
}

std::optional<SessionSources::WindowsOffer> SessionSources::windowsOfSway() {
    if (swayVersion().isEmpty())
        return std::nullopt;
    return WindowsOffer{
        .name = QStringLiteral("the tree of sway %1").arg(swayVersion()),
        .make =
            [this] {
                return std::make_unique<wayland::WaylandWindowSource>(
                    std::make_shared<sway::SwayDesktop>(swayEvents()));
            },
    };
}

std::optional<SessionSources::WindowsOffer> SessionSources::windowsOfToplevels(
    wayland::ToplevelProtocol protocol) const {
    const QString path = wayland::socketPath(facts_.waylandName);
    if (path.isEmpty())
        return std::nullopt;
    const auto desktop = std::make_shared<wayland::ToplevelDesktop>(path, protocol);
    const std::uint32_t version = desktop->version();
    if (version == 0)
        return std::nullopt;
    return WindowsOffer{
        .name = QStringLiteral("%1, version %2").arg(wayland::nameOf(protocol)).arg(version),
        .make = [desktop] { return std::make_unique<wayland::WaylandWindowSource>(desktop); },
    };
}

std::optional<SessionSources::WindowsOffer> SessionSources::windowsOfPlasma() {
    return windowsOfToplevels(wayland::ToplevelProtocol::PlasmaWindowManagement);
}

std::optional<SessionSources::WindowsOffer> SessionSources::windowsOfForeignToplevels() {
    return windowsOfToplevels(wayland::ToplevelProtocol::ForeignToplevelManagement);
}

std::optional<SessionSources::WindowsOffer> SessionSources::windowsOfKWin() {
    if (!isWaylandOf(u"KDE"))
        return std::nullopt;
    const auto desktop = std::make_shared<plasma::KWinDesktop>();
    if (!desktop->isThere())
        return std::nullopt;
    return WindowsOffer{
        .name = QStringLiteral("a script in KWin"),
        .make = [desktop] { return std::make_unique<wayland::WaylandWindowSource>(desktop); },
    };
}

std::optional<SessionSources::WindowsOffer> SessionSources::windowsOfGnome() {
    const auto extension = extensionInUse();
    if (!extension)
        return std::nullopt;
    return WindowsOffer{
        .name = nameOf(*extension),
        .make =
            [extension] {
                return std::make_unique<wayland::WaylandWindowSource>(
                    std::make_shared<gnome::GnomeDesktop>(extension));
            },
    };
}

SessionSources::WindowsOffer SessionSources::windowsOfX() const {
    return {
        .name = facts_.doesXAnswer ? QStringLiteral("the X server") : QStringLiteral("none"),
        .areThere = facts_.doesXAnswer,
        .make =
            [this] {
                using Session = x11::X11WindowSource::Session;
                return std::make_unique<x11::X11WindowSource>(
                    facts_.xName, log_,
                    facts_.isWaylandSession ? Session::OfWayland : Session::OfX);
            },
    };
}

bool SessionSources::isWaylandOf(QStringView desktop) const {
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return facts_.isWaylandSession && desktops.contains(desktop);
}

std::shared_ptr<const gnome::ShellExtension> SessionSources::gnomeExtension() {
    if (!gnomeExtension_ && isWaylandOf(u"GNOME"))
        gnomeExtension_ = std::make_shared<gnome::ShellExtension>();
    return gnomeExtension_;
}

gnome::GnomeShellInstallation &SessionSources::gnomeInstallation() {
    if (!gnomeInstallation_)
        gnomeInstallation_.emplace(gnomeExtension(), QStandardPaths::writableLocation(
                                                         QStandardPaths::GenericDataLocation));
    return *gnomeInstallation_;
}

std::shared_ptr<const gnome::ShellExtension> SessionSources::extensionInUse() {
    const auto extension = gnomeExtension();
    if (!isExtensionInUse_)
        isExtensionInUse_ = extension && (gnomeInstallation().isExpected() || portalVersion() == 0);
    return *isExtensionInUse_ ? extension : nullptr;
}

uint SessionSources::portalVersion() {
    if (!portalVersion_)
        portalVersion_ = facts_.isWaylandSession ? portal::globalShortcutsVersion() : 0;
    return *portalVersion_;
}

const QString &SessionSources::swayVersion() {
    if (!swayVersion_)
        swayVersion_ = sway::versionOf(sway::socketOfSession());
    return *swayVersion_;
}

const std::shared_ptr<sway::SwayEvents> &SessionSources::swayEvents() {
    if (!swayEvents_)
        swayEvents_ = std::make_shared<sway::SwayEvents>(sway::socketOfSession());
    return swayEvents_;
}

}  // namespace kestrelbay
