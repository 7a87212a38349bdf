#pragma once

// Stands for <AppKit/NSGraphicsContext.h> and, of <AppKit/NSGraphics.h>,
// NSCompositingOperation.

#include <CoreGraphics/CGBitmapContext.h>
#import <Foundation/Foundation.h>

typedef enum NSCompositingOperation : NSUInteger {
    NSCompositingOperationSourceOver = 2,
} NSCompositingOperation;

@interface NSGraphicsContext : NSObject {
    CGContextRef context_;
}
+ (nonnull NSGraphicsContext *)graphicsContextWithCGContext:(nonnull CGContextRef)graphicsPort
                                                    flipped:(BOOL)flipped;
/// The thread's.
+ (nullable NSGraphicsContext *)currentContext;
+ (void)setCurrentContext:(nullable NSGraphicsContext *)currentContext;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@property(readonly, nonnull) CGContextRef CGContext;
@end
