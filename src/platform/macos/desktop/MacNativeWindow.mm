#include "platform/macos/desktop/MacNativeWindow.h"

#include <cmath>

#import <AppKit/NSApplication.h>
#import <AppKit/NSBezierPath.h>
#import <AppKit/NSColor.h>
#import <AppKit/NSImage.h>
#import <AppKit/NSPanel.h>
#import <AppKit/NSScreen.h>
#import <AppKit/NSVisualEffectView.h>
#import <QuartzCore/CALayer.h>

#include "platform/macos/cocoa/ObjCOwner.h"

namespace kestrelbay {

namespace {

constexpr NSWindowCollectionBehavior kEverywhere =
    NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
static_assert(kEverywhere == 257);
static_assert(NSWindowStyleMaskNonactivatingPanel == 128);
static_assert(NSWindowStyleMaskFullSizeContentView == 1 << 15);
static_assert(NSWindowTitleHidden == 1);
static_assert(NSVisualEffectMaterialHUDWindow == 13);
static_assert(NSVisualEffectBlendingModeBehindWindow == 0);
static_assert(NSVisualEffectStateActive == 1);

NSView *viewOf(NativeWindow::Id window) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): Qt hands pointers out as numbers.
    return reinterpret_cast<NSView *>(window);
}

/// A rounded rectangle that keeps its corners at any size.
NSImage *roundedMask(CGFloat radius) {
    const CGFloat side = 2 * radius + 1;
    NSImage *const mask = [NSImage imageWithSize:NSMakeSize(side, side)
                                         flipped:NO
                                  drawingHandler:^BOOL(NSRect bounds) {
                                    [[NSColor blackColor] set];
                                    [[NSBezierPath bezierPathWithRoundedRect:bounds
                                                                     xRadius:radius
                                                                     yRadius:radius] fill];
                                    return YES;
                                  }];
    mask.capInsets = NSEdgeInsetsMake(radius, radius, radius, radius);
    mask.resizingMode = NSImageResizingModeStretch;
    return mask;
}

/// The material behind a content view; nil when it has none yet.
NSVisualEffectView *materialBehind(NSView *content) {
    for (NSView *sibling in content.superview.subviews)
        if ([sibling isKindOfClass:[NSVisualEffectView class]])
            return static_cast<NSVisualEffectView *>(sibling);
    return nil;
}

NSVisualEffectView *addMaterialBehind(NSView *content) {
    const ObjCOwner<NSVisualEffectView *> material([[NSVisualEffectView alloc] init]);
    material.get().material = NSVisualEffectMaterialHUDWindow;
    material.get().blendingMode = NSVisualEffectBlendingModeBehindWindow;
    material.get().state = NSVisualEffectStateActive;
    material.get().wantsLayer = YES;
    material.get().layer.masksToBounds = YES;
    // Beside the content view, not within it: what is in it lies over what Qt paints.
    [content.superview addSubview:material.get() positioned:NSWindowBelow relativeTo:content];
    return material.get();
}

}  // namespace

void MacNativeWindow::makeFloatingPanel(Id window) {
    @autoreleasepool {
        NSWindow *const native = viewOf(window).window;
        native.level = NSFloatingWindowLevel;
        native.collectionBehavior = kEverywhere;
        if ([native isKindOfClass:[NSPanel class]]) {
            native.styleMask |= NSWindowStyleMaskNonactivatingPanel;
            // Panels otherwise go when another program comes to the front.
            native.hidesOnDeactivate = NO;
        }
    }
}

void MacNativeWindow::setBehindWindowMaterial(Id window, const QRect &rectangle, int cornerRadius) {
    @autoreleasepool {
        NSView *const content = viewOf(window);
        if (!content.superview)
            return;
        NSVisualEffectView *material = materialBehind(content);
        if (!material)
            material = addMaterialBehind(content);
        const NSRect frame =
            NSMakeRect(rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height());
        material.frame = [content.superview convertRect:frame fromView:content];
        material.layer.cornerRadius = cornerRadius;
        material.maskImage = roundedMask(cornerRadius);
    }
}

void MacNativeWindow::extendContentUnderTitleBar(Id window) {
    @autoreleasepool {
        NSView *const content = viewOf(window);
        NSWindow *const native = content.window;
        const NSSize size = content.frame.size;
        native.titlebarAppearsTransparent = YES;
        native.titleVisibility = NSWindowTitleHidden;
        native.styleMask |= NSWindowStyleMaskFullSizeContentView;
        // The frame has kept its size, and the content has taken the bar's part of it.
        [native setContentSize:size];
    }
}

void MacNativeWindow::bringProgramForward(Id window) {
    @autoreleasepool {
        NSWindow *const native = viewOf(window).window;
        if (!native)
            return;
        [native makeKeyAndOrderFront:nil];
        [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
    }
}

std::optional<QPoint> MacNativeWindow::activeWindowCenter() const {
    @autoreleasepool {
        // The system's name for the screen with the key window; the first is the one
        // with the menu bar, from whose lower left corner all are measured upwards.
        NSScreen *const screen = [NSScreen mainScreen];
        NSScreen *const first = [[NSScreen screens] firstObject];
        if (!screen || !first)
            return std::nullopt;
        return QPoint(static_cast<int>(std::lround(NSMidX(screen.frame))),
                      static_cast<int>(std::lround(NSMaxY(first.frame) - NSMidY(screen.frame))));
    }
}

}  // namespace kestrelbay
