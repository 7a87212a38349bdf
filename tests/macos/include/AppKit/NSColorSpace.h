#pragma once

// Stands for <AppKit/NSColorSpace.h>.

#import <Foundation/Foundation.h>

@interface NSColorSpace : NSObject
+ (nonnull NSColorSpace *)sRGBColorSpace;
@end
