#pragma once

// Stands for <AppKit/NSVisualEffectView.h>.

#import <AppKit/NSView.h>

@class NSImage;

typedef NSInteger NSVisualEffectMaterial;
enum : NSVisualEffectMaterial { NSVisualEffectMaterialHUDWindow = 13 };

typedef NSInteger NSVisualEffectBlendingMode;
enum : NSVisualEffectBlendingMode {
    NSVisualEffectBlendingModeBehindWindow = 0,
    NSVisualEffectBlendingModeWithinWindow = 1,
};

typedef NSInteger NSVisualEffectState;
enum : NSVisualEffectState {
    NSVisualEffectStateFollowsWindowActiveState = 0,
    NSVisualEffectStateActive = 1,
    NSVisualEffectStateInactive = 2,
};

@interface NSVisualEffectView : NSView {
    NSVisualEffectMaterial material_;
    NSVisualEffectBlendingMode blendingMode_;
    NSVisualEffectState state_;
    NSImage *maskImage_;
}
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@property(retain) NSImage *maskImage;
@end
