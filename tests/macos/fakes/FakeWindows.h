#pragma once

#import <AppKit/NSPanel.h>
#import <AppKit/NSVisualEffectView.h>

#include <optional>
#include <vector>

#include <QRect>

namespace kestrelbay::macos {

/// Screens in the system's coordinates, the one with the menu bar first. `main` is the
/// index of the one with the key window.
void setScreens(const std::vector<QRect> &screens, std::optional<std::size_t> main);

/// What the application gives as its windows; nil for none.
void setApplicationWindows(NSArray *windows);

}  // namespace kestrelbay::macos

// What the fakes can do besides.

@interface NSWindow (KestrelBayFake)
/// Its content view is turned upside down, as Qt's are, and lies in a frame view.
+ (instancetype)windowWithSize:(NSSize)size;
/// With a title bar above the content view.
+ (instancetype)titledWindowWithSize:(NSSize)size;
@end

@interface NSView (KestrelBayFake)
- (void)putInto:(NSView *)view of:(NSWindow *)window;
@end
