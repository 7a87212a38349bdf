#pragma once

// Stands for <AppKit/NSBezierPath.h>.

#import <Foundation/Foundation.h>

@interface NSBezierPath : NSObject {
    NSString *shape_;
}
+ (nonnull NSBezierPath *)bezierPathWithRoundedRect:(NSRect)rect
                                            xRadius:(CGFloat)xRadius
                                            yRadius:(CGFloat)yRadius;
- (void)fill;
@end
