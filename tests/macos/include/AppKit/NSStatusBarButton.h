#pragma once

// Stands for <AppKit/NSStatusBarButton.h>.

#import <AppKit/NSButton.h>

@interface NSStatusBarButton : NSButton
@end
