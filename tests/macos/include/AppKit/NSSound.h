#pragma once

// Stands for <AppKit/NSSound.h>.

#import <Foundation/Foundation.h>

@interface NSSound : NSObject {
    NSString *name_;
}
+ (NSSound *)soundNamed:(NSString *)name;
- (BOOL)play;
@end
