#pragma once

// Stands for <AppKit/NSColor.h>.

#import <Foundation/Foundation.h>

@class NSColorSpace;

@interface NSColor : NSObject {
@public
    NSString *name_;
    CGFloat parts_[4];
}
+ (NSColor *)blackColor;
+ (NSColor *)controlAccentColor;
+ (NSColor *)systemGreenColor;
+ (NSColor *)systemOrangeColor;
+ (NSColor *)systemRedColor;
- (NSColor *)colorUsingColorSpace:(NSColorSpace *)space;
- (void)getRed:(CGFloat *)red green:(CGFloat *)green blue:(CGFloat *)blue alpha:(CGFloat *)alpha;
- (void)set;
@end
