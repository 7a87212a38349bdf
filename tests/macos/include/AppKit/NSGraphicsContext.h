#pragma once

// Stands for <AppKit/NSGraphicsContext.h> and, of <AppKit/NSGraphics.h>,
// NSCompositingOperation.

#include <CoreGraphics/CGBitmapContext.h>
#import <Foundation/Foundation.h>

typedef NSUInteger NSCompositingOperation;
enum : NSCompositingOperation { NSCompositingOperationSourceOver = 2 };

@interface NSGraphicsContext : NSObject {
    CGContextRef context_;
}
+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)context flipped:(BOOL)flipped;
/// The thread's.
+ (NSGraphicsContext *)currentContext;
+ (void)setCurrentContext:(NSGraphicsContext *)context;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@property(readonly) CGContextRef CGContext;
@end
