#pragma once

// Stands for <AppKit/NSPanel.h>.

#import <AppKit/NSWindow.h>

@interface NSPanel : NSWindow
@end
