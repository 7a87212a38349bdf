#pragma once

// Stands for <AppKit/NSView.h> and, of <AppKit/NSGraphics.h>, NSWindowOrderingMode.

#import <Foundation/Foundation.h>

@class CALayer;
@class NSWindow;

typedef NSInteger NSWindowOrderingMode;
enum : NSWindowOrderingMode {
    NSWindowAbove = 1,
    NSWindowBelow = -1,
    NSWindowOut = 0,
};

@interface NSView : NSObject {
    NSRect frame_;
    NSView *superview_;
    NSWindow *window_;
    NSMutableArray *subviews_;
    CALayer *layer_;
    BOOL wantsLayer_;
}
@property NSRect frame;
@property BOOL wantsLayer;
@property(readonly, assign) NSView *superview;
@property(readonly, assign) NSWindow *window;
@property(readonly, copy) NSArray *subviews;
/// Nil until a layer is wanted.
@property(readonly, assign) CALayer *layer;
@property(readonly, getter=isFlipped) BOOL flipped;
- (void)addSubview:(NSView *)view
        positioned:(NSWindowOrderingMode)place
        relativeTo:(NSView *)otherView;
- (NSRect)convertRect:(NSRect)rect fromView:(NSView *)view;
@end
