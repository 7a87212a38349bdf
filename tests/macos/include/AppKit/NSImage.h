#pragma once

// Stands for <AppKit/NSImage.h>.

#import <AppKit/NSGraphicsContext.h>

typedef NSInteger NSImageResizingMode;
enum : NSImageResizingMode {
    NSImageResizingModeTile = 0,
    NSImageResizingModeStretch = 1,
};

@interface NSImage : NSObject {
    NSSize size_;
    BOOL (^drawingHandler_)(NSRect);
    NSEdgeInsets capInsets_;
    NSImageResizingMode resizingMode_;
}
+ (NSImage *)imageWithSystemSymbolName:(NSString *)name
              accessibilityDescription:(NSString *)description;
+ (NSImage *)imageWithSize:(NSSize)size
                   flipped:(BOOL)flipped
            drawingHandler:(BOOL (^)(NSRect bounds))handler;
- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)fromRect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction;
@property NSSize size;
@property NSEdgeInsets capInsets;
@property NSImageResizingMode resizingMode;
@end
