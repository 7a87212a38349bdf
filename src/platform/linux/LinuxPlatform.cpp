#include "platform/linux/LinuxPlatform.h"

#include <QDir>
#include <QStandardPaths>

#include <utility>

#include "platform/linux/CanberraSounds.h"
#include "platform/linux/JsonUserDefaults.h"
#include "platform/linux/LinuxApplicationCatalog.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SoundFiles.h"
#include "platform/linux/SyslogLog.h"
#include "platform/linux/XConnection.h"
#include "platform/linux/XEventTap.h"

namespace kestrelbay {

namespace {

bool isWaylandSession() {
    return qgetenv("XDG_SESSION_TYPE") == "wayland" || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
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
