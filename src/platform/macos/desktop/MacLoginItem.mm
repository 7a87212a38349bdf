#include "platform/macos/desktop/MacLoginItem.h"

#import <Foundation/Foundation.h>

#include <QDir>

#include "platform/macos/cocoa/NSStrings.h"
#include "platform/macos/desktop/LaunchAgent.h"
#include "platform/macos/desktop/ServiceLoginItem.h"

namespace kestrelbay {

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
