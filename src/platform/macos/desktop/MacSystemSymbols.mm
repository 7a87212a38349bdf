#include "platform/macos/desktop/MacSystemSymbols.h"

#import <AppKit/NSImage.h>

#include "platform/macos/cocoa/NSImages.h"
#include "platform/macos/cocoa/NSStrings.h"

namespace kestrelbay {

QImage MacSystemSymbols::image(const QString &name, QSize size) const {
    @autoreleasepool {
        return toQImage([NSImage imageWithSystemSymbolName:toNSString(name)
                                  accessibilityDescription:nil],
                        size);
    }
}

}  // namespace kestrelbay
