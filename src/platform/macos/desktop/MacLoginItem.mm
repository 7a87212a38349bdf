#include "platform/macos/desktop/MacLoginItem.h"

#import <Foundation/Foundation.h>
#import <ServiceManagement/SMAppService.h>

#include <QDir>

#include "platform/macos/cocoa/Strings.h"
#include "platform/macos/desktop/LaunchAgent.h"

// The service is used only on systems that have it.
#pragma clang diagnostic ignored "-Wunguarded-availability-new"

namespace kestrelbay {

namespace {

static_assert(SMAppServiceStatusNotRegistered == 0 && SMAppServiceStatusEnabled == 1);
static_assert(SMAppServiceStatusRequiresApproval == 2 && SMAppServiceStatusNotFound == 3);

/// The service takes being asked for what is so already as a mistake.
bool isSoAlready(bool enabled, SMAppServiceStatus status) {
    if (enabled)
        return status == SMAppServiceStatusEnabled;
    return status == SMAppServiceStatusNotRegistered || status == SMAppServiceStatusNotFound;
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

std::unique_ptr<LoginItem> makeLoginItem() {
    @autoreleasepool {
        const NSOperatingSystemVersion first = {13, 0, 0};
        if ([[NSProcessInfo processInfo] isOperatingSystemAtLeastVersion:first])
            return std::make_unique<ServiceLoginItem>();
        return std::make_unique<LegacyLoginItem>(QDir::homePath(),
                                                 toQString([[NSBundle mainBundle] bundlePath]));
    }
}

}  // namespace kestrelbay
