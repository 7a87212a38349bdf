#pragma once

// Stands for <AppKit/NSColor.h>.

#import <Foundation/Foundation.h>

@class NSColorSpace;

@interface NSColor : NSObject {
@public
    NSString *name_;
    CGFloat parts_[4];
}
+ (nonnull NSColor *)blackColor;
+ (nonnull NSColor *)controlAccentColor;
+ (nonnull NSColor *)alternateSelectedControlTextColor;
+ (nonnull NSColor *)secondaryLabelColor;
+ (nonnull NSColor *)tertiaryLabelColor;
+ (nonnull NSColor *)separatorColor;
+ (nonnull NSColor *)systemGreenColor;
+ (nonnull NSColor *)systemOrangeColor;
+ (nonnull NSColor *)systemRedColor;
- (nullable NSColor *)colorUsingColorSpace:(nonnull NSColorSpace *)space;
- (void)getRed:(nullable CGFloat *)red
         green:(nullable CGFloat *)green
          blue:(nullable CGFloat *)blue
         alpha:(nullable CGFloat *)alpha;
- (void)set;
@end
