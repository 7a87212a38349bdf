#pragma once

// Stands for <AppKit/NSButton.h> and the classes above it that are not declared here.

#import <AppKit/NSView.h>

@class NSImage;

@interface NSButton : NSView {
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
