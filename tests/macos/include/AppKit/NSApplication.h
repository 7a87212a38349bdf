#pragma once

// Stands for <AppKit/NSApplication.h> and, of <AppKit/NSRunningApplication.h>,
// NSApplicationActivationPolicy.

#import <AppKit/NSResponder.h>

typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
} NSApplicationActivationPolicy;

extern NSNotificationName NSApplicationWillFinishLaunchingNotification;

@class NSWindow;

@interface NSApplication : NSResponder
+ (nonnull NSApplication *)sharedApplication;
@property(readonly, copy, nonnull) NSArray<NSWindow *> *windows;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
@end
