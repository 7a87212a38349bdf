#pragma once

// Stands for <AppKit/NSImage.h>.

#import <AppKit/NSGraphicsContext.h>

/// With the numbers of arm64; on x86_64 they are swapped.
typedef enum NSImageResizingMode : NSInteger {
    NSImageResizingModeTile = 0,
    NSImageResizingModeStretch = 1,
} NSImageResizingMode;

@interface NSImage : NSObject {
    NSSize size_;
    NSString *accessibilityDescription_;
    BOOL (^drawingHandler_)(NSRect);
    NSEdgeInsets capInsets_;
    NSImageResizingMode resizingMode_;
}
+ (nullable NSImage *)imageWithSystemSymbolName:(nonnull NSString *)name
                       accessibilityDescription:(nullable NSString *)description;
+ (nonnull NSImage *)imageWithSize:(NSSize)size
                           flipped:(BOOL)flipped
                    drawingHandler:(nonnull BOOL (^)(NSRect bounds))drawingHandler;
- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)fromRect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction;
@property NSSize size;
@property NSEdgeInsets capInsets;
@property NSImageResizingMode resizingMode;
@end
