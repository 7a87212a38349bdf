#pragma once

// Stands for <AppKit/NSSound.h>.

#import <Foundation/Foundation.h>

typedef NSString *NSSoundName;

@interface NSSound : NSObject {
    NSString *name_;
}
+ (nullable NSSound *)soundNamed:(nonnull NSSoundName)name;
- (BOOL)play;
@end
