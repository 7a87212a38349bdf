#include "platform/macos/desktop/MacServices.h"

#import <AppKit/NSImage.h>
#import <AppKit/NSSound.h>
#import <AppKit/NSWorkspace.h>

#include "platform/macos/cocoa/NSImages.h"
#include "platform/macos/cocoa/NSStrings.h"

namespace kestrelbay {

bool MacSystemSettings::openAccessibilityPane() {
    @autoreleasepool {
        NSURL *const pane = [NSURL
            URLWithString:
                @"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"];
        return [[NSWorkspace sharedWorkspace] openURL:pane] != NO;
    }
}

QStringList MacSystemSounds::directories() const {
    return {QStringLiteral("/System/Library/Sounds")};
}

QStringList MacSystemSounds::suffixes() const {
    return {QStringLiteral(".aiff"), QStringLiteral(".aif")};
}

void MacSystemSounds::play(const QString &name) {
    @autoreleasepool {
        [[NSSound soundNamed:toNSString(name)] play];
    }
}

QImage MacSystemSymbols::image(const QString &name, QSize size) const {
    @autoreleasepool {
        return toQImage([NSImage imageWithSystemSymbolName:toNSString(name)
                                  accessibilityDescription:nil],
                        size);
    }
}

}  // namespace kestrelbay
