#include "fakes/FakeServices.h"

#import <AppKit/NSSound.h>
#include <ApplicationServices/ApplicationServices.h>

#include <tuple>
#include <utility>

#include <os/log.h>

#include "fakes/MacJournal.h"
#include "platform/macos/cocoa/Strings.h"

using kestrelbay::toNSString;
using kestrelbay::toQString;
using kestrelbay::macos::record;

namespace {

NSOperatingSystemVersion systemVersion = {15, 1, 0};
QStringList sounds;
SMAppServiceStatus loginItemStatus = SMAppServiceStatusNotRegistered;
QString loginItemRefusal;
bool isProcessTrusted = false;

BOOL answer(bool mistake, SMAppServiceStatus next, NSError **error) {
    const QString reason =
        mistake ? QStringLiteral("It is so already") : std::as_const(loginItemRefusal);
    if (reason.isEmpty()) {
        loginItemStatus = next;
        return YES;
    }
    *error = [NSError errorWithDomain:@"SMAppServiceErrorDomain"
                                 code:1
                             userInfo:@{NSLocalizedDescriptionKey : toNSString(reason)}];
    return NO;
}

}  // namespace

@implementation NSProcessInfo (KestrelBayVersions)
- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version {
    const auto order = [](const NSOperatingSystemVersion &v) {
        return std::tuple(v.majorVersion, v.minorVersion, v.patchVersion);
    };
    return order(systemVersion) >= order(version);
}
@end

@implementation NSSound
+ (NSSound *)soundNamed:(NSString *)name {
    if (!sounds.contains(toQString(name)))
        return nil;
    NSSound *const sound = [[[NSSound alloc] init] autorelease];
    sound->name_ = [name copy];
    return sound;
}

- (void)dealloc {
    [name_ release];
    [super dealloc];
}

- (BOOL)play {
    record(QStringLiteral("play %1").arg(toQString(name_)));
    return YES;
}
@end

@implementation SMAppService
+ (SMAppService *)mainAppService {
    return [[[SMAppService alloc] init] autorelease];
}

- (BOOL)registerAndReturnError:(NSError **)error {
    record(QStringLiteral("register the main application"));
    return answer(loginItemStatus == SMAppServiceStatusEnabled, SMAppServiceStatusEnabled, error);
}

- (BOOL)unregisterAndReturnError:(NSError **)error {
    record(QStringLiteral("unregister the main application"));
    return answer(loginItemStatus == SMAppServiceStatusNotRegistered,
                  SMAppServiceStatusNotRegistered, error);
}

- (SMAppServiceStatus)status {
    return loginItemStatus;
}
@end

Boolean AXIsProcessTrusted() {
    return isProcessTrusted;
}

struct os_log_s {
    QString name;
};

os_log_t os_log_create(const char *subsystem, const char *category) {
    static os_log_s log;
    log.name =
        QStringLiteral("%1/%2").arg(QString::fromUtf8(subsystem), QString::fromUtf8(category));
    return &log;
}

void kestrelbayLog(os_log_t log, os_log_type_t type, const char *format, const char *text) {
    record(QStringLiteral("log to %1, type %2, format %3: %4")
               .arg(log->name)
               .arg(type)
               .arg(QString::fromUtf8(format), QString::fromUtf8(text)));
}

namespace kestrelbay::macos {

void setSystemVersion(NSOperatingSystemVersion version) {
    systemVersion = version;
}

void setSounds(const QStringList &names) {
    sounds = names;
}

void resetLoginItems() {
    loginItemStatus = SMAppServiceStatusNotRegistered;
    loginItemRefusal.clear();
}

void setLoginItemStatus(SMAppServiceStatus status) {
    loginItemStatus = status;
}

void setLoginItemRefusal(const QString &reason) {
    loginItemRefusal = reason;
}

void setProcessTrusted(bool trusted) {
    isProcessTrusted = trusted;
}

}  // namespace kestrelbay::macos
