#pragma once

// Stands for <AppKit/NSApplication.h> and, of <AppKit/NSRunningApplication.h>,
// NSApplicationActivationPolicy.

#import <Foundation/Foundation.h>

typedef NSInteger NSApplicationActivationPolicy;
enum : NSApplicationActivationPolicy {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};

@interface NSApplication : NSObject
+ (NSApplication *)sharedApplication;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
@end
