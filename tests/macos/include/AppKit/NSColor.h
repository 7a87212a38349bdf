#pragma once

// Stands for <AppKit/NSColor.h>.

#import <Foundation/Foundation.h>

@interface NSColor : NSObject
+ (NSColor *)blackColor;
- (void)set;
@end
