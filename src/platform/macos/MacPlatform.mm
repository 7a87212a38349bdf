#include "platform/Platform.h"

#import <AppKit/NSApplication.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <pthread/qos.h>
#include <sys/utsname.h>

#include "platform/macos/MacEventTap.h"
#include "platform/macos/applications/MacApplicationCatalog.h"
#include "platform/macos/applications/MacWorkspace.h"
#include "platform/macos/cocoa/Strings.h"
#include "platform/macos/desktop/MacKeyboardLayout.h"
#include "platform/macos/desktop/MacLoginItem.h"
#include "platform/macos/desktop/MacNativeWindow.h"
#include "platform/macos/desktop/MacReopening.h"
#include "platform/macos/desktop/MacServices.h"
#include "platform/macos/desktop/MacSystemAlerts.h"
#include "platform/macos/desktop/MacUserDefaults.h"

namespace kestrelbay {

namespace {

static_assert(NSApplicationActivationPolicyAccessory == 1);
static_assert(QOS_CLASS_USER_INTERACTIVE == 0x21);
static_assert(NSApplicationSupportDirectory == 14 && NSUserDomainMask == 1);

QString machine() {
    utsname names{};
    return ::uname(&names) == 0 ? QString::fromLocal8Bit(names.machine)
                                : QStringLiteral("not known");
}

/// The services of macOS, which is asked for nothing before they are.
class MacPlatform final : public Platform {
public:
    MacPlatform() {
        // Otherwise Qt has the program come forward as soon as it is launched, which at login
        // takes the keyboard from whatever the user is typing into.
        qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    }

    [[nodiscard]] EventTap &eventTap() override { return tap_; }
    [[nodiscard]] Workspace &workspace() override { return workspace_; }
    [[nodiscard]] ApplicationCatalog &applicationCatalog() override { return catalog_; }
    [[nodiscard]] UserDefaults &userDefaults() override { return defaults_; }
    [[nodiscard]] SystemSounds &systemSounds() override { return sounds_; }
    [[nodiscard]] SystemLog &systemLog() override { return log_; }
    [[nodiscard]] LoginItem &loginItem() override {
        if (!loginItem_)
            loginItem_ = makeLoginItem();
        return *loginItem_;
    }
    [[nodiscard]] SystemSettings &systemSettings() override { return systemSettings_; }
    [[nodiscard]] NativeWindow &nativeWindow() override { return nativeWindow_; }
    [[nodiscard]] SystemTray &systemTray() override { return systemTray_; }
    [[nodiscard]] ScreenLock &screenLock() override { return screenLock_; }
    [[nodiscard]] HotkeyHolders &hotkeyHolders() override { return hotkeyHolders_; }
    [[nodiscard]] KeyboardLayout &keyboardLayout() override { return keyboardLayout_; }
    [[nodiscard]] const SystemSymbols *systemSymbols() override { return &systemSymbols_; }
    [[nodiscard]] const SystemTints *systemTints() override { return &systemTints_; }
    [[nodiscard]] SystemAlerts *systemAlerts() override { return &systemAlerts_; }

    [[nodiscard]] DesktopExtension *desktopExtension() override { return nullptr; }
    /// The user's Library/Application Support.
    [[nodiscard]] QString applicationSupportDirectory() const override {
        @autoreleasepool {
            NSArray *const folders = NSSearchPathForDirectoriesInDomains(
                NSApplicationSupportDirectory, NSUserDomainMask, YES);
            return toQString(static_cast<NSString *>([folders firstObject]));
        }
    }
    void becomeAccessory() override {
        @autoreleasepool {
            [[NSApplication sharedApplication]
                setActivationPolicy:NSApplicationActivationPolicyAccessory];
        }
    }
    void hurryThisThread() override {
        // Refused only to threads that have left the classes, which none of ours do.
        static_cast<void>(pthread_set_qos_class_self_np(QOS_CLASS_USER_INTERACTIVE, 0));
    }
    /// Nothing to do: the system takes freed pages when it is short of memory.
    void giveBackMemory() override {}
    [[nodiscard]] std::vector<std::pair<QString, QString>> diagnostics() override {
        @autoreleasepool {
            return {{QStringLiteral("System"),
                     toQString([[NSProcessInfo processInfo] operatingSystemVersionString])},
                    {QStringLiteral("Machine"), machine()},
                    {QStringLiteral("Bundle"), toQString([[NSBundle mainBundle] bundlePath])},
                    {QStringLiteral("Accessibility permission"),
                     AXIsProcessTrusted() ? QStringLiteral("given") : QStringLiteral("not given")}};
        }
    }
    /// Never called: a program ends with the session, which ends it.
    void setSessionEndedHandler(std::function<void()> /*handler*/) override {}
    void setReopenHandler(std::function<void()> handler) override {
        reopening_.setHandler(std::move(handler));
    }
    /// Always empty.
    [[nodiscard]] QString startupProblem() const override { return {}; }
    /// Always empty: there is one.
    [[nodiscard]] QString qtPlatform() const override { return {}; }

private:
    MacEventTap tap_;
    MacWorkspace workspace_;
    MacApplicationCatalog catalog_;
    MacUserDefaults defaults_;
    MacSystemSounds sounds_;
    UnifiedLog log_;
    /// Made when it is first asked for: it is the system's version that decides which.
    std::unique_ptr<LoginItem> loginItem_;
    MacSystemSettings systemSettings_;
    MacNativeWindow nativeWindow_;
    MacSystemTray systemTray_;
    MacScreenLock screenLock_;
    MacHotkeyHolders hotkeyHolders_;
    MacKeyboardLayout keyboardLayout_;
    MacSystemSymbols systemSymbols_;
    MacSystemTints systemTints_;
    MacSystemAlerts systemAlerts_;
    MacReopening reopening_;
};

}  // namespace

std::unique_ptr<Platform> makePlatform() {
    return std::make_unique<MacPlatform>();
}

}  // namespace kestrelbay
