#pragma once

// Stands for <AppKit/NSVisualEffectView.h>.

#import <AppKit/NSView.h>

@class NSImage;

typedef enum NSVisualEffectMaterial : NSInteger {
    NSVisualEffectMaterialHUDWindow = 13,
} NSVisualEffectMaterial;

typedef enum NSVisualEffectBlendingMode : NSInteger {
    NSVisualEffectBlendingModeBehindWindow = 0,
    NSVisualEffectBlendingModeWithinWindow = 1,
} NSVisualEffectBlendingMode;

typedef enum NSVisualEffectState : NSInteger {
    NSVisualEffectStateFollowsWindowActiveState = 0,
    NSVisualEffectStateActive = 1,
    NSVisualEffectStateInactive = 2,
} NSVisualEffectState;

@interface NSVisualEffectView : NSView {
    NSVisualEffectMaterial material_;
    NSVisualEffectBlendingMode blendingMode_;
    NSVisualEffectState state_;
    NSImage *maskImage_;
}
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@property(retain, nullable) NSImage *maskImage;
@end
