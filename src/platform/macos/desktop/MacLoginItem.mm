#include "platform/macos/desktop/MacLoginItem.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/SMAppService.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLatin1StringView>

#include "files/DataFile.h"
#include "platform/macos/cocoa/Strings.h"
#include "platform/macos/cocoa/SystemVersion.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// The service takes being asked for what is so already as a mistake.
API_AVAILABLE(macos(13.0))
bool isSoAlready(bool enabled, SMAppServiceStatus status) {
    static_assert(SMAppServiceStatusNotRegistered == 0 && SMAppServiceStatusEnabled == 1);
    static_assert(SMAppServiceStatusRequiresApproval == 2 && SMAppServiceStatusNotFound == 3);
    if (enabled)
        return status == SMAppServiceStatusEnabled;
    return status == SMAppServiceStatusNotRegistered || status == SMAppServiceStatusNotFound;
}

constexpr QLatin1StringView kLabel{"org.kestrelbay.KestrelBay"};

QByteArray xmlText(const QString &text) {
    QByteArray escaped = text.toUtf8();
    escaped.replace('&', "&amp;");
    escaped.replace('<', "&lt;");
    escaped.replace('>', "&gt;");
    return escaped;
}

}  // namespace

bool ServiceLoginItem::isEnabled() const {
    @autoreleasepool {
        return [SMAppService mainAppService].status == SMAppServiceStatusEnabled;
    }
}

std::optional<QString> ServiceLoginItem::setEnabled(bool enabled) {
    @autoreleasepool {
        SMAppService *const service = [SMAppService mainAppService];
        NSError *error = nil;
        const BOOL done = enabled ? [service registerAndReturnError:&error]
                                  : [service unregisterAndReturnError:&error];
        if (done || isSoAlready(enabled, service.status))
            return std::nullopt;
        return toQString(error.localizedDescription);
    }
}

QByteArray launchAgentPropertyList(const QString &label, const QString &bundlePath) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
    <key>Label</key>
    <string>)" +
           xmlText(label) + R"(</string>
    <key>ProgramArguments</key>
    <array>
        <string>/usr/bin/open</string>
        <string>-a</string>
        <string>)" +
           xmlText(bundlePath) + R"(</string>
    </array>
    <key>RunAtLoad</key>
    <true/>
    <key>KeepAlive</key>
    <false/>
</dict>
</plist>)";
}

QString launchAgentPath(const QString &home) {
    return home + u"/Library/LaunchAgents/"_s + kLabel + u".plist"_s;
}

void setLaunchAtLoginLegacy(bool enabled, const QString &home, const QString &bundlePath) {
    const QString path = launchAgentPath(home);
    if (enabled)
        static_cast<void>(DataFile(path).replace(launchAgentPropertyList(kLabel, bundlePath),
                                                 DataFile::OldFile::Replace));
    else
        QFile::remove(path);
}

bool LegacyLoginItem::isEnabled() const {
    return QFileInfo::exists(launchAgentPath(home_));
}

std::optional<QString> LegacyLoginItem::setEnabled(bool enabled) {
    setLaunchAtLoginLegacy(enabled, home_, bundlePath_);
    return std::nullopt;
}

// The compiler knows only its own way of asking for the version, which is always told "yes" off
// the Mac.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wunguarded-availability-new"

std::unique_ptr<LoginItem> makeLoginItem() {
    @autoreleasepool {
        if (isMacOSAtLeast(13))
            return std::make_unique<ServiceLoginItem>();
        return std::make_unique<LegacyLoginItem>(QDir::homePath(),
                                                 toQString([[NSBundle mainBundle] bundlePath]));
    }
}

#pragma clang diagnostic pop

}  // namespace kestrelbay
