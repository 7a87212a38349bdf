#pragma once

// Stands for <AppKit/NSWindow.h>.

#import <AppKit/NSView.h>

typedef NSInteger NSWindowLevel;
/// kCGFloatingWindowLevel of <CoreGraphics/CGWindowLevel.h>.
static const NSWindowLevel NSFloatingWindowLevel = 3;

typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskUtilityWindow = 1 << 4,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
    NSWindowStyleMaskFullSizeContentView = 1 << 15,
};

typedef enum NSWindowTitleVisibility : NSInteger {
    NSWindowTitleVisible = 0,
    NSWindowTitleHidden = 1,
} NSWindowTitleVisibility;

typedef NSUInteger NSWindowCollectionBehavior;
enum : NSWindowCollectionBehavior {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

@interface NSWindow : NSResponder {
    NSView *frameView_;
    NSView *contentView_;
    NSWindowLevel level_;
    NSWindowStyleMask styleMask_;
    NSWindowCollectionBehavior collectionBehavior_;
    BOOL hidesOnDeactivate_;
    BOOL titlebarAppearsTransparent_;
    NSWindowTitleVisibility titleVisibility_;
}
@property NSWindowLevel level;
@property NSWindowStyleMask styleMask;
@property NSWindowCollectionBehavior collectionBehavior;
@property BOOL hidesOnDeactivate;
@property(retain, nullable) NSView *contentView;
@property BOOL titlebarAppearsTransparent;
@property NSWindowTitleVisibility titleVisibility;
- (void)setContentSize:(NSSize)size;
- (void)makeKeyAndOrderFront:(nullable id)sender;
@end

@interface NSWindow (NSWindowSheets)
@property(readonly, assign, nullable) NSWindow *sheetParent;
- (void)endSheet:(nonnull NSWindow *)sheetWindow;
@end
