#include "platform/macos/desktop/MacSystemSounds.h"

#import <AppKit/NSSound.h>

#include "platform/macos/cocoa/NSStrings.h"

namespace kestrelbay {

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

}  // namespace kestrelbay
