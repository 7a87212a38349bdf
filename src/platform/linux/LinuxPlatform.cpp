#include <memory>
#include <optional>
#include <utility>

#include <QDir>
#include <QGuiApplication>
#include <QStandardPaths>

#include "platform/DesktopExtension.h"
#include "platform/Platform.h"
#include "platform/linux/DisplayFacts.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/MemoryRelease.h"
#include "platform/linux/SessionSources.h"
#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"
#include "platform/linux/bus/SessionBus.h"
#include "platform/linux/desktop/AutostartLoginItem.h"
#include "platform/linux/desktop/CanberraSounds.h"
#include "platform/linux/desktop/DesktopScreenLock.h"
#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/linux/desktop/LinuxSystemTray.h"
#include "platform/linux/desktop/PortalSystemSettings.h"
#include "platform/linux/desktop/QtNativeWindow.h"
#include "platform/linux/desktop/SyslogLog.h"
#include "platform/linux/shortcuts/DesktopHotkeyHolders.h"
#include "platform/linux/wayland/sway/SwayIpc.h"
#include "platform/linux/x11/connection/DisplayDiagnostics.h"
#include "platform/linux/x11/connection/XlibLoss.h"
#include "platform/linux/x11/keymap/X11KeyboardLayout.h"
#include "platform/linux/x11/panels/X11NativeWindow.h"

namespace kestrelbay {

namespace {

QString variable(const char *name) {
    const QString value = qEnvironmentVariable(name);
    return value.isEmpty() ? QStringLiteral("not set") : value;
}

/// The services of an X11 session, and of a Wayland one as far as they reach. Each that does
/// anything is made when it is first asked for, so that asking for the start-up problem needs none
/// of them.
class LinuxPlatform final : public Platform {
public:
    [[nodiscard]] EventTap &eventTap() override {
        if (!tap_)
            tap_ = sources().makeEventTap([this] { tellOfSessionsEnd(); });
        return *tap_;
    }

    [[nodiscard]] LinuxWorkspace &workspace() override {
        if (!workspace_)
            workspace_.emplace(sources().makeWindowSource(), displayName_);
        return *workspace_;
    }

    [[nodiscard]] ApplicationCatalog &applicationCatalog() override {
        if (!catalog_)
            catalog_.emplace([&workspace = workspace()] { return workspace.applicationIndex(); });
        return *catalog_;
    }

    [[nodiscard]] UserDefaults &userDefaults() override {
        if (!defaults_) {
            const QString folder = applicationSupportDirectory();
            defaults_.emplace(folder.isEmpty() ? QString()
                                               : QDir(folder).filePath(
                                                     QStringLiteral("KestrelBay/settings.json")));
        }
        return *defaults_;
    }

    [[nodiscard]] SystemSounds &systemSounds() override {
        if (!sounds_)
            sounds_.emplace(standardSoundDirectories());
        return *sounds_;
    }

    [[nodiscard]] SystemLog &systemLog() override { return log_; }

    [[nodiscard]] LoginItem &loginItem() override {
        if (!loginItem_)
            loginItem_.emplace(AutostartLoginItem::placesOfThisProgram());
        return *loginItem_;
    }

    [[nodiscard]] PortalSystemSettings &systemSettings() override {
        if (!systemSettings_)
            systemSettings_.emplace(bus_.connection());
        return *systemSettings_;
    }

    [[nodiscard]] NativeWindow &nativeWindow() override {
        if (!nativeWindow_) {
            // Identifiers of other windows than X's would be taken for some of X.
            if (areWindowsOnX())
                nativeWindow_ = std::make_unique<x11::X11NativeWindow>(displayName_);
            else
                nativeWindow_ = std::make_unique<QtNativeWindow>();
        }
        return *nativeWindow_;
    }

    [[nodiscard]] LinuxSystemTray &systemTray() override {
        if (!systemTray_) {
            LinuxSystemTray::Settings settings;
            settings.displayName = displayName_;
            settings.desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
            systemTray_.emplace(bus_.connection(), systemSettings(), std::move(settings));
            QObject::connect(&*systemSettings_, &PortalSystemSettings::colorSchemeChanged,
                             &*systemTray_, &LinuxSystemTray::colorSchemeChanged);
        }
        return *systemTray_;
    }

    [[nodiscard]] ScreenLock &screenLock() override { return screenLock_; }

    [[nodiscard]] HotkeyHolders &hotkeyHolders() override { return hotkeyHolders_; }

    [[nodiscard]] KeyboardLayout &keyboardLayout() override {
        if (!keyboardLayout_)
            keyboardLayout_.emplace(displayName_);
        return *keyboardLayout_;
    }

    /// None: icon themes have other names and shapes.
    [[nodiscard]] const SystemSymbols *systemSymbols() override { return nullptr; }

    /// None: no desktop tells of others than the accent, which the palette has.
    [[nodiscard]] const SystemTints *systemTints() override { return nullptr; }

    /// None: desktops bring none that all of them have.
    [[nodiscard]] SystemAlerts *systemAlerts() override { return nullptr; }

    [[nodiscard]] DesktopExtension *desktopExtension() override {
        return sources().desktopExtension();
    }

    /// $XDG_CONFIG_HOME. Qt takes "/" for the home folder of a user who has none.
    [[nodiscard]] QString applicationSupportDirectory() const override {
        const auto isFolder = [](const char *name) {
            return QDir::isAbsolutePath(qEnvironmentVariable(name));
        };
        return isFolder("XDG_CONFIG_HOME") || isFolder("HOME")
                   ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                   : QString();
    }

    /// Nothing to do: a task bar shows windows, not programs, and no menu bar is shared.
    void becomeAccessory() override {}

    /// Nothing: without privileges a thread gets only slower.
    void hurryThisThread() override {}

    void giveBackMemory() override { releaseMemory(); }

    /// Takes up to a few tenths of a second when services do not answer.
    [[nodiscard]] std::vector<std::pair<QString, QString>> diagnostics() override {
        std::vector<std::pair<QString, QString>> pairs{
            {QStringLiteral("Session"), QStringLiteral("%1 (DISPLAY: %2, WAYLAND_DISPLAY: %3)")
                                            .arg(variable("XDG_SESSION_TYPE"), variable("DISPLAY"),
                                                 variable("WAYLAND_DISPLAY"))},
            {QStringLiteral("Desktop"), variable("XDG_CURRENT_DESKTOP")},
            {QStringLiteral("Own windows"), qtPlatformInWords()},
            {QStringLiteral("Source of hotkeys"), sources().hotkeysInWords()},
            {QStringLiteral("Source of windows"), sources().windowsInWords()}};
        for (auto &pair : x11::describeDisplay(displayName_))
            pairs.push_back(std::move(pair));
        systemTray().waitForAnswer();
        pairs.emplace_back(QStringLiteral("Tray"), systemTray().description());
        pairs.emplace_back(QStringLiteral("Session bus"), bus_.connection().isConnected()
                                                              ? QStringLiteral("reachable")
                                                              : QStringLiteral("not reachable"));
        pairs.emplace_back(QStringLiteral("Portal"), systemSettings().isPortalPresent()
                                                         ? QStringLiteral("present")
                                                         : QStringLiteral("not present"));
        if (sources().hasWindows())
            for (auto &pair : workspace().windowReport())
                pairs.push_back(std::move(pair));
        return pairs;
    }

    void setSessionEndedHandler(std::function<void()> handler) override {
        sessionEnded_ = std::move(handler);
        if (!areWindowsOnX())
            return;
        if (sessionEnded_)
            x11::setXlibLossHandler([this] { tellOfSessionsEnd(); });
        else
            x11::setXlibLossHandler({});
    }

    /// Never called: there a second instance starts, which asks the first over the session bus.
    void setReopenHandler(std::function<void()> /*handler*/) override {}

    [[nodiscard]] QString startupProblem() const override { return displayProblem(displayFacts()); }

    [[nodiscard]] QString qtPlatform() const override { return qtPlatformFor(displayFacts()); }

private:
    /// As they were when they were first asked for.
    [[nodiscard]] const DisplayFacts &displayFacts() const {
        if (!displayFacts_)
            displayFacts_ = readDisplayFacts();
        return *displayFacts_;
    }

    [[nodiscard]] SessionSources &sources() {
        if (!sources_)
            sources_.emplace(displayFacts(), log_);
        return *sources_;
    }

    void tellOfSessionsEnd() {
        if (const auto handler = std::exchange(sessionEnded_, nullptr))
            handler();
    }

    [[nodiscard]] static bool areWindowsOnX() {
        return QGuiApplication::platformName() == QLatin1StringView("xcb");
    }

    /// Of this process, if it has windows, and otherwise of one that were to start now.
    [[nodiscard]] QString qtPlatformInWords() const {
        if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
            return QGuiApplication::platformName();
        if (displayFacts().isQtPlatformNamed)
            return qEnvironmentVariable("QT_QPA_PLATFORM") +
                   QStringLiteral(", as QT_QPA_PLATFORM says");
        const QString platform = qtPlatform();
        return platform.isEmpty() ? QStringLiteral("as Qt chooses") : platform;
    }

    const QString displayName_ = qEnvironmentVariable("DISPLAY");
    mutable std::optional<DisplayFacts> displayFacts_;
    std::function<void()> sessionEnded_;
    SyslogLog log_;
    std::optional<SessionSources> sources_;
    std::optional<JsonUserDefaults> defaults_;
    std::optional<CanberraSounds> sounds_;
    std::optional<LinuxApplicationCatalog> catalog_;
    std::optional<LinuxWorkspace> workspace_;
    std::unique_ptr<EventTap> tap_;
    std::optional<x11::X11KeyboardLayout> keyboardLayout_;
    std::optional<AutostartLoginItem> loginItem_;
    std::unique_ptr<NativeWindow> nativeWindow_;
    SessionBus bus_;
    std::optional<PortalSystemSettings> systemSettings_;
    std::optional<LinuxSystemTray> systemTray_;
    DesktopScreenLock screenLock_{bus_, qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS")};
    DesktopHotkeyHolders hotkeyHolders_{
        {.displayName = displayName_,
         .desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
         .swaySocket = sway::socketOfSession(),
         .configFolder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)},
        bus_};
};

}  // namespace

std::unique_ptr<Platform> makePlatform() {
    return std::make_unique<LinuxPlatform>();
}

}  // namespace kestrelbay
