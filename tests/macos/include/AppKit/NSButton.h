#pragma once

// Stands for <AppKit/NSButton.h> and <AppKit/NSControl.h>.

#import <AppKit/NSView.h>

@class NSImage;

@interface NSControl : NSView
@end

@interface NSButton : NSControl {
    NSImage *image_;
    NSString *title_;
    NSString *keyEquivalent_;
    BOOL hasDestructiveAction_;
}
@property(retain, nullable) NSImage *image;
@property(copy, nonnull) NSString *title;
@property(copy, nonnull) NSString *keyEquivalent;
@property BOOL hasDestructiveAction;
@end
