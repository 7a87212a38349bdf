#pragma once

#import <AppKit/NSImage.h>

#include <QString>

namespace kestrelbay::macos {

/// The one symbol that the fake system has, with its size; none until told.
void setSystemSymbol(const QString &name, NSSize size);

/// From now on no bitmap context can be made.
void refuseBitmaps(bool refuse);

}  // namespace kestrelbay::macos

@interface NSImage (KestrelBayFake)
/// It is drawn as a full rectangle of opaque red.
+ (NSImage *)redImageWithSize:(NSSize)size;
/// The one that it was made with.
- (NSString *)shownDescription;
/// Calls its drawing handler. What is drawn there is in the journal afterwards.
- (BOOL)drawIntoJournal;
@end
