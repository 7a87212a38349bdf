#pragma once

// Stands for <AppKit/NSScreen.h>.

#import <Foundation/Foundation.h>

@interface NSScreen : NSObject {
    NSRect frame_;
}
/// Of the one with the key window.
+ (nullable NSScreen *)mainScreen;
/// The first is the one with the menu bar.
+ (nonnull NSArray<NSScreen *> *)screens;
@property(readonly) NSRect frame;
@end
