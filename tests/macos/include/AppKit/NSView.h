#pragma once

// Stands for <AppKit/NSView.h> and, of <AppKit/NSGraphics.h>, NSWindowOrderingMode.

#import <AppKit/NSResponder.h>

@class CALayer;
@class NSWindow;

typedef enum NSWindowOrderingMode : NSInteger {
    NSWindowAbove = 1,
    NSWindowBelow = -1,
    NSWindowOut = 0,
} NSWindowOrderingMode;

@interface NSView : NSResponder {
    NSRect frame_;
    NSView *superview_;
    NSWindow *window_;
    NSMutableArray *subviews_;
    CALayer *layer_;
    BOOL wantsLayer_;
}
@property NSRect frame;
@property BOOL wantsLayer;
@property(readonly, assign, nullable) NSView *superview;
@property(readonly, assign, nullable) NSWindow *window;
@property(copy, nonnull) NSArray<__kindof NSView *> *subviews;
/// Nil until a layer is wanted.
@property(retain, nullable) CALayer *layer;
@property(readonly, getter=isFlipped) BOOL flipped;
- (void)addSubview:(nonnull NSView *)view
        positioned:(NSWindowOrderingMode)place
        relativeTo:(nullable NSView *)otherView;
- (NSRect)convertRect:(NSRect)rect fromView:(nullable NSView *)view;
@end
