#pragma once

// Stands for <AppKit/NSAppearance.h>.

#import <AppKit/NSApplication.h>
#import <Foundation/Foundation.h>

@interface NSAppearance : NSObject
- (void)performAsCurrentDrawingAppearance:(nonnull void (^)(void))block;
@end

/// A protocol in the framework's own.
@interface NSApplication (NSAppearanceCustomization)
@property(readonly, nonnull) NSAppearance *effectiveAppearance;
@end
