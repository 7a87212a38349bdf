#pragma once

// Stands for <AppKit/NSScreen.h>.

#import <Foundation/Foundation.h>

@interface NSScreen : NSObject {
    NSRect frame_;
}
/// Of the one with the key window.
+ (NSScreen *)mainScreen;
/// The first is the one with the menu bar.
+ (NSArray *)screens;
@property(readonly) NSRect frame;
@end
