#include "platform/macos/MacPlatform.h"

#import <AppKit/NSApplication.h>
#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <sys/utsname.h>

#include "platform/macos/MacEventTap.h"
#include "platform/macos/applications/MacApplicationCatalog.h"
#include "platform/macos/applications/MacWorkspace.h"
#include "platform/macos/cocoa/NSStrings.h"
#include "platform/macos/desktop/MacLoginItem.h"
#include "platform/macos/desktop/MacNativeWindow.h"
#include "platform/macos/desktop/MacServices.h"
#include "platform/macos/desktop/MacUserDefaults.h"
#include "platform/macos/desktop/UnifiedLog.h"

namespace kestrelbay {

namespace {

static_assert(NSApplicationActivationPolicyAccessory == 1);
static_assert(NSApplicationSupportDirectory == 14 && NSUserDomainMask == 1);

template <typename Service, typename Interface>
Interface &made(std::unique_ptr<Interface> &service) {
    if (!service)
        service = std::make_unique<Service>();
    return *service;
}

QString machine() {
    utsname names{};
    return ::uname(&names) == 0 ? QString::fromLocal8Bit(names.machine)
                                : QStringLiteral("not known");
}

}  // namespace

MacPlatform::MacPlatform() = default;
MacPlatform::~MacPlatform() = default;

EventTap &MacPlatform::eventTap() {
    return made<MacEventTap>(tap_);
}

Workspace &MacPlatform::workspace() {
    return made<MacWorkspace>(workspace_);
}

ApplicationCatalog &MacPlatform::applicationCatalog() {
    return made<MacApplicationCatalog>(catalog_);
}

UserDefaults &MacPlatform::userDefaults() {
    return made<MacUserDefaults>(defaults_);
}

SystemSounds &MacPlatform::systemSounds() {
    return made<MacSystemSounds>(sounds_);
}

SystemLog &MacPlatform::systemLog() {
    return made<UnifiedLog>(log_);
}

LoginItem &MacPlatform::loginItem() {
    if (!loginItem_)
        loginItem_ = makeLoginItem();
    return *loginItem_;
}

SystemSettings &MacPlatform::systemSettings() {
    return made<MacSystemSettings>(systemSettings_);
}

NativeWindow &MacPlatform::nativeWindow() {
    return made<MacNativeWindow>(nativeWindow_);
}

StatusArea &MacPlatform::statusArea() {
    return made<MacStatusArea>(statusArea_);
}

const SystemSymbols *MacPlatform::systemSymbols() {
    return &made<MacSystemSymbols>(systemSymbols_);
}

QString MacPlatform::applicationSupportDirectory() const {
    @autoreleasepool {
        NSArray *const folders = NSSearchPathForDirectoriesInDomains(NSApplicationSupportDirectory,
                                                                     NSUserDomainMask, YES);
        return toQString(static_cast<NSString *>([folders firstObject]));
    }
}

void MacPlatform::becomeAccessory() {
    @autoreleasepool {
        [[NSApplication sharedApplication]
            setActivationPolicy:NSApplicationActivationPolicyAccessory];
    }
}

std::vector<std::pair<QString, QString>> MacPlatform::diagnostics() {
    @autoreleasepool {
        return {{QStringLiteral("System"),
                 toQString([[NSProcessInfo processInfo] operatingSystemVersionString])},
                {QStringLiteral("Machine"), machine()},
                {QStringLiteral("Bundle"), toQString([[NSBundle mainBundle] bundlePath])},
                {QStringLiteral("Accessibility permission"),
                 AXIsProcessTrusted() ? QStringLiteral("given") : QStringLiteral("not given")}};
    }
}

std::unique_ptr<Platform> makePlatform() {
    return std::make_unique<MacPlatform>();
}

}  // namespace kestrelbay
