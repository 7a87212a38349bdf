#include "platform/macos/desktop/MacSystemSettings.h"

#import <AppKit/NSWorkspace.h>

namespace kestrelbay {

bool MacSystemSettings::openAccessibilityPane() {
    @autoreleasepool {
        NSURL *const pane = [NSURL
            URLWithString:
                @"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"];
        return [[NSWorkspace sharedWorkspace] openURL:pane] != NO;
    }
}

}  // namespace kestrelbay
