#pragma once

// Stands for <AppKit/NSColorSpace.h>.

#import <Foundation/Foundation.h>

@interface NSColorSpace : NSObject
+ (NSColorSpace *)sRGBColorSpace;
@end
