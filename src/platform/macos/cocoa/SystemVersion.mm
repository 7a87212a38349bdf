#include "platform/macos/cocoa/SystemVersion.h"

#import <Foundation/Foundation.h>

namespace kestrelbay {

bool isMacOSAtLeast(int major) {
    @autoreleasepool {
        const NSOperatingSystemVersion first = {major, 0, 0};
        return [[NSProcessInfo processInfo] isOperatingSystemAtLeastVersion:first];
    }
}

}  // namespace kestrelbay
