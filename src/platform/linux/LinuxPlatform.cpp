#include "platform/linux/LinuxPlatform.h"

#include <QDir>
#include <QStandardPaths>

#include <utility>

#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/desktop/AutostartLoginItem.h"
#include "platform/linux/desktop/CanberraSounds.h"
#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/linux/desktop/LinuxStatusArea.h"
#include "platform/linux/desktop/PortalSystemSettings.h"
#include "platform/linux/desktop/SyslogLog.h"
#include "platform/linux/x11/connection/DisplayDiagnostics.h"
#include "platform/linux/x11/connection/XConnection.h"
#include "platform/linux/x11/keyboard/XEventTap.h"
#include "platform/linux/x11/panels/GrabFocusFilter.h"
#include "platform/linux/x11/panels/X11NativeWindow.h"

namespace kestrelbay {

namespace {

bool isWaylandSession() {
    return qgetenv("XDG_SESSION_TYPE") == "wayland" || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

QString variable(const char *name) {
    const QString value = qEnvironmentVariable(name);
    return value.isEmpty() ? QStringLiteral("not set") : value;
}

}  // namespace

LinuxPlatform::LinuxPlatform()
    : displayName_(qEnvironmentVariable("DISPLAY")), log_(std::make_unique<SyslogLog>()) {}

LinuxPlatform::~LinuxPlatform() = default;

EventTap &LinuxPlatform::eventTap() {
    if (!tap_) {
        x11::XEventTap::Settings settings;
        settings.displayName = displayName_;
        settings.isX11Session = !isWaylandSession();
        settings.displayLost = [this] {
            if (const auto handler = std::exchange(sessionEnded_, nullptr))
                handler();
        };
        tap_ = std::make_unique<x11::XEventTap>(std::move(settings));
        grabFocusFilter_ = std::make_unique<x11::GrabFocusFilter>();
    }
    return *tap_;
}

Workspace &LinuxPlatform::workspace() {
    if (!workspace_)
        workspace_ = std::make_unique<x11::LinuxWorkspace>(displayName_, *log_);
    return *workspace_;
}

ApplicationCatalog &LinuxPlatform::applicationCatalog() {
    if (!catalog_)
        catalog_ = std::make_unique<LinuxApplicationCatalog>();
    return *catalog_;
}

UserDefaults &LinuxPlatform::userDefaults() {
    if (!defaults_) {
        defaults_ = std::make_unique<JsonUserDefaults>(
            QDir(applicationSupportDirectory())
                .filePath(QStringLiteral("KestrelBay/settings.json")));
    }
    return *defaults_;
}

SystemSounds &LinuxPlatform::systemSounds() {
    if (!sounds_)
        sounds_ = std::make_unique<CanberraSounds>(standardSoundDirectories());
    return *sounds_;
}

SystemLog &LinuxPlatform::systemLog() {
    return *log_;
}

LoginItem &LinuxPlatform::loginItem() {
    if (!loginItem_) {
        loginItem_ =
            std::make_unique<AutostartLoginItem>(AutostartLoginItem::placesOfThisProgram());
    }
    return *loginItem_;
}

NativeWindow &LinuxPlatform::nativeWindow() {
    if (!nativeWindow_)
        nativeWindow_ = std::make_unique<x11::X11NativeWindow>(displayName_);
    return *nativeWindow_;
}

SessionBus &LinuxPlatform::bus() {
    if (!bus_)
        bus_ = std::make_unique<SessionBus>();
    return *bus_;
}

PortalSystemSettings &LinuxPlatform::portalSettings() {
    if (!systemSettings_) {
        systemSettings_ = std::make_unique<PortalSystemSettings>(bus().connection());
        systemSettings_->addObserver([this] {
            if (statusArea_)
                statusArea_->colorSchemeChanged();
        });
    }
    return *systemSettings_;
}

SystemSettings &LinuxPlatform::systemSettings() {
    return portalSettings();
}

LinuxStatusArea &LinuxPlatform::linuxStatusArea() {
    if (!statusArea_) {
        LinuxStatusArea::Settings settings;
        settings.displayName = displayName_;
        settings.desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
        statusArea_ = std::make_unique<LinuxStatusArea>(bus().connection(), portalSettings(),
                                                        std::move(settings));
    }
    return *statusArea_;
}

StatusArea &LinuxPlatform::statusArea() {
    return linuxStatusArea();
}

std::vector<std::pair<QString, QString>> LinuxPlatform::diagnostics() {
    std::vector<std::pair<QString, QString>> pairs{
        {QStringLiteral("Session"),
         QStringLiteral("%1 (DISPLAY: %2, WAYLAND_DISPLAY: %3)")
             .arg(variable("XDG_SESSION_TYPE"), variable("DISPLAY"), variable("WAYLAND_DISPLAY"))},
        {QStringLiteral("Desktop"), variable("XDG_CURRENT_DESKTOP")}};
    for (auto &pair : x11::describeDisplay(displayName_))
        pairs.push_back(std::move(pair));
    linuxStatusArea().waitForAnswer();
    pairs.emplace_back(QStringLiteral("Tray"), linuxStatusArea().description());
    pairs.emplace_back(QStringLiteral("Session bus"), bus().connection().isConnected()
                                                          ? QStringLiteral("reachable")
                                                          : QStringLiteral("not reachable"));
    pairs.emplace_back(QStringLiteral("Portal"), portalSettings().isPortalPresent()
                                                     ? QStringLiteral("present")
                                                     : QStringLiteral("not present"));
    return pairs;
}

QString LinuxPlatform::applicationSupportDirectory() const {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

void LinuxPlatform::setSessionEndedHandler(std::function<void()> handler) {
    sessionEnded_ = std::move(handler);
}

QString LinuxPlatform::startupProblem() const {
    if (displayName_.isEmpty())
        return QStringLiteral("there is no X server to work with (DISPLAY is not set)");
    if (!x11::XConnection(displayName_).isUsable())
        return QStringLiteral("the X server %1 does not answer").arg(displayName_);
    return {};
}

std::unique_ptr<Platform> makePlatform() {
    return std::make_unique<LinuxPlatform>();
}

}  // namespace kestrelbay
