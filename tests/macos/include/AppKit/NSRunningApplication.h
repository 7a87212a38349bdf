#pragma once

// Stands for <AppKit/NSRunningApplication.h>.

#import <Foundation/Foundation.h>
#include <sys/types.h>

typedef NSUInteger NSApplicationActivationOptions;
enum : NSApplicationActivationOptions { NSApplicationActivateIgnoringOtherApps = 1U << 1U };

@interface NSRunningApplication : NSObject {
    pid_t pid_;
}
@property(readonly, copy, nullable) NSURL *bundleURL;
@property(readonly, copy, nullable) NSString *bundleIdentifier;
@property(readonly) pid_t processIdentifier;
@property(readonly, getter=isActive) BOOL active;
@property(readonly, getter=isTerminated) BOOL terminated;
- (BOOL)hide;
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options;
@end
