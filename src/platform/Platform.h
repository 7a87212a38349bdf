#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <QString>

namespace kestrelbay {

class ApplicationCatalog;
class DesktopExtension;
class EventTap;
class HotkeyHolders;
class KeyboardLayout;
class LoginItem;
class NativeWindow;
class ScreenLock;
class SystemTray;
class SystemAlerts;
class SystemLog;
class SystemSettings;
class SystemSounds;
class SystemSymbols;
class SystemTints;
class UserDefaults;
class Workspace;

/// The services of the system the program was built for. Made once, in main, before the
/// application object, which may have to be told something by then, and outlives everything that
/// was given one of its services.
class Platform {
public:
    virtual ~Platform() = default;

    [[nodiscard]] virtual EventTap &eventTap() = 0;
    [[nodiscard]] virtual Workspace &workspace() = 0;
    [[nodiscard]] virtual ApplicationCatalog &applicationCatalog() = 0;
    [[nodiscard]] virtual UserDefaults &userDefaults() = 0;
    [[nodiscard]] virtual SystemSounds &systemSounds() = 0;
    [[nodiscard]] virtual SystemLog &systemLog() = 0;
    [[nodiscard]] virtual LoginItem &loginItem() = 0;
    [[nodiscard]] virtual SystemSettings &systemSettings() = 0;
    [[nodiscard]] virtual NativeWindow &nativeWindow() = 0;
    [[nodiscard]] virtual SystemTray &systemTray() = 0;
    [[nodiscard]] virtual ScreenLock &screenLock() = 0;
    [[nodiscard]] virtual HotkeyHolders &hotkeyHolders() = 0;
    [[nodiscard]] virtual KeyboardLayout &keyboardLayout() = 0;

    /// Null where the system has none, so that the program's own are used.
    [[nodiscard]] virtual const SystemSymbols *systemSymbols() = 0;
    [[nodiscard]] virtual const SystemTints *systemTints() = 0;
    [[nodiscard]] virtual SystemAlerts *systemAlerts() = 0;

    /// Null where the desktop gives hotkeys without one of ours.
    [[nodiscard]] virtual DesktopExtension *desktopExtension() = 0;

    /// The folder that holds one folder of files for each of the user's programs. Empty when
    /// the system names none.
    [[nodiscard]] virtual QString applicationSupportDirectory() const = 0;

    /// From now on the program has no icon among those of the programs in use, nor
    /// a menu bar of its own.
    virtual void becomeAccessory() = 0;

    /// The calling thread does now what the user waits for, and is to be scheduled like that. For
    /// threads that do nothing else; where the system has no such classes, nothing. Any thread.
    virtual void hurryThisThread() = 0;

    /// Gives back to the system what is not in use just now, where it does not take that by
    /// itself. Takes some milliseconds; of use when the program comes to rest.
    virtual void giveBackMemory() = 0;

    /// What a report of a problem has to say of the system: names of things in
    /// English, and how each is here. Usable also when startupProblem() is not empty.
    [[nodiscard]] virtual std::vector<std::pair<QString, QString>> diagnostics() = 0;

    /// Called once, on the main thread, when the user's session has gone from under
    /// the program, which can then only end.
    virtual void setSessionEndedHandler(std::function<void()> handler) = 0;

    /// Called on the main thread each time that the user opens the program while it runs, where
    /// the system hands that to the one that runs. To be set before the event loop begins.
    virtual void setReopenHandler(std::function<void()> handler) = 0;

    /// Empty when the program can run in this session; otherwise why it cannot,
    /// as one line for the user. To be asked before any service is used.
    [[nodiscard]] virtual QString startupProblem() const = 0;

    /// The platform plugin of Qt that shows this program's windows best in this session, as Qt's
    /// option -platform takes it. Empty where Qt chooses that by itself, and where the user has
    /// chosen. For the application object: the environment is also that of launched programs.
    [[nodiscard]] virtual QString qtPlatform() const = 0;
};

/// Implemented by the one back end that is compiled in.
[[nodiscard]] std::unique_ptr<Platform> makePlatform();

}  // namespace kestrelbay
