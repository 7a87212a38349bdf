#import <AppKit/NSApplication.h>
#import <AppKit/NSBezierPath.h>
#import <AppKit/NSScreen.h>
#import <AppKit/NSStatusBarButton.h>
#import <QuartzCore/CALayer.h>

#import "fakes/FakeObject.h"
#include "fakes/FakeWindows.h"
#include "fakes/MacJournal.h"
#include "platform/macos/cocoa/Strings.h"

using kestrelbay::toQString;
using kestrelbay::macos::record;

namespace {

constexpr CGFloat kTitleBarHeight = 28;

NSArray *applicationWindows = nil;
NSArray *allScreens = nil;
NSScreen *screenWithKeyWindow = nil;

QString words(NSRect rect) {
    return QStringLiteral("%1,%2 %3x%4")
        .arg(rect.origin.x)
        .arg(rect.origin.y)
        .arg(rect.size.width)
        .arg(rect.size.height);
}

}  // namespace

@implementation NSResponder
@end

@implementation CALayer
@synthesize cornerRadius = cornerRadius_;
@synthesize masksToBounds = masksToBounds_;
@end

@implementation NSView
@synthesize frame = frame_;
@synthesize superview = superview_;
@synthesize window = window_;
@synthesize wantsLayer = wantsLayer_;
// Only read.
@dynamic subviews;
@dynamic layer;

- (instancetype)init {
    if ((self = [super init])) {
        subviews_ = [[NSMutableArray alloc] init];
        kestrelbay::macos::objectWasMade();
    }
    return self;
}

- (void)dealloc {
    kestrelbay::macos::objectIsGone();
    [subviews_ release];
    [layer_ release];
    [super dealloc];
}

- (BOOL)isFlipped {
    return NO;
}

- (NSArray *)subviews {
    return subviews_;
}

- (CALayer *)layer {
    if (wantsLayer_ && !layer_)
        layer_ = [[CALayer alloc] init];
    return layer_;
}

- (void)putInto:(NSView *)view of:(NSWindow *)window {
    superview_ = view;
    window_ = window;
    if (view)
        [view->subviews_ addObject:self];
}

- (void)addSubview:(NSView *)view
        positioned:(NSWindowOrderingMode)place
        relativeTo:(NSView *)otherView {
    record(QStringLiteral("add %1 at %2 of %3")
               .arg(toQString(NSStringFromClass([view class])))
               .arg(place)
               .arg(toQString(NSStringFromClass([otherView class]))));
    const NSUInteger other = [subviews_ indexOfObject:otherView];
    [subviews_ insertObject:view atIndex:place == NSWindowBelow ? other : other + 1];
    view->superview_ = self;
    view->window_ = window_;
}

/// Of a subview that fills this view.
- (NSRect)convertRect:(NSRect)rect fromView:(NSView *)view {
    if (view.flipped != self.flipped)
        rect.origin.y = NSHeight(view.frame) - NSMaxY(rect);
    return NSOffsetRect(rect, NSMinX(view.frame), NSMinY(view.frame));
}
@end

/// Stands for the view of Qt's, whose class is Qt's own.
@interface ContentView : NSView
@end

@implementation ContentView
- (BOOL)isFlipped {
    return YES;
}
@end

@implementation NSControl
@end

@implementation NSButton
@synthesize image = image_;
@synthesize title = title_;
@synthesize keyEquivalent = keyEquivalent_;
@synthesize hasDestructiveAction = hasDestructiveAction_;

- (void)dealloc {
    [image_ release];
    [title_ release];
    [keyEquivalent_ release];
    [super dealloc];
}
@end

@implementation NSStatusBarButton
@end

@implementation NSVisualEffectView
@synthesize material = material_;
@synthesize blendingMode = blendingMode_;
@synthesize state = state_;
@synthesize maskImage = maskImage_;

- (void)dealloc {
    [maskImage_ release];
    [super dealloc];
}
@end

@implementation NSWindow
@synthesize contentView = contentView_;
@synthesize titlebarAppearsTransparent = titlebarAppearsTransparent_;
@synthesize titleVisibility = titleVisibility_;

+ (instancetype)titledWindowWithSize:(NSSize)size {
    NSWindow *const window = [self windowWithSize:size];
    window->styleMask_ = 1;
    [window setContentSize:size];
    return window;
}

+ (instancetype)windowWithSize:(NSSize)size {
    NSWindow *const window = [[[self alloc] init] autorelease];
    const NSRect frame = NSMakeRect(0, 0, size.width, size.height);
    window->frameView_.frame = frame;
    window->contentView_.frame = frame;
    return window;
}

- (instancetype)init {
    if ((self = [super init])) {
        frameView_ = [[NSView alloc] init];
        contentView_ = [[ContentView alloc] init];
        [frameView_ putInto:nil of:self];
        [contentView_ putInto:frameView_ of:self];
        styleMask_ = NSWindowStyleMaskUtilityWindow;
        hidesOnDeactivate_ = YES;
    }
    return self;
}

- (void)dealloc {
    [contentView_ release];
    [frameView_ release];
    [super dealloc];
}

- (NSWindowLevel)level {
    return level_;
}

- (void)setLevel:(NSWindowLevel)level {
    level_ = level;
    record(QStringLiteral("level %1").arg(level));
}

- (NSWindowStyleMask)styleMask {
    return styleMask_;
}

/// As in the system's, the frame stays and the content takes what the mask gives it.
- (void)setStyleMask:(NSWindowStyleMask)mask {
    const NSWindowStyleMask added = mask & ~styleMask_;
    styleMask_ = mask;
    if (added & NSWindowStyleMaskFullSizeContentView)
        contentView_.frame = frameView_.frame;
    record(QStringLiteral("style mask %1").arg(mask));
}

- (void)setContentSize:(NSSize)size {
    NSRect frame = NSMakeRect(0, 0, size.width, size.height);
    contentView_.frame = frame;
    if (!(styleMask_ & NSWindowStyleMaskFullSizeContentView))
        frame.size.height += kTitleBarHeight;
    frameView_.frame = frame;
}

- (NSWindowCollectionBehavior)collectionBehavior {
    return collectionBehavior_;
}

- (void)setCollectionBehavior:(NSWindowCollectionBehavior)behavior {
    collectionBehavior_ = behavior;
    record(QStringLiteral("collection behavior %1").arg(behavior));
}

- (BOOL)hidesOnDeactivate {
    return hidesOnDeactivate_;
}

- (void)setHidesOnDeactivate:(BOOL)hides {
    hidesOnDeactivate_ = hides;
    record(QStringLiteral("hides on deactivate %1").arg(int{hides}));
}

- (void)makeKeyAndOrderFront:(id)sender {
    record(QStringLiteral("make key and order front, sender %1").arg(sender ? 1 : 0));
}
@end

@implementation NSPanel
@end

@implementation NSApplication
@dynamic windows;

+ (NSApplication *)sharedApplication {
    static NSApplication *const application = [[NSApplication alloc] init];
    return application;
}

- (NSArray *)windows {
    return applicationWindows;
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    record(QStringLiteral("activation policy %1").arg(policy));
    return YES;
}

- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps {
    record(QStringLiteral("activate, ignoring other apps %1").arg(int{ignoreOtherApps}));
}
@end

@implementation NSScreen
@synthesize frame = frame_;

+ (NSScreen *)mainScreen {
    return screenWithKeyWindow;
}

+ (NSArray *)screens {
    return allScreens;
}

- (instancetype)initWithFrame:(NSRect)frame {
    if ((self = [super init]))
        frame_ = frame;
    return self;
}
@end

@implementation NSBezierPath
+ (NSBezierPath *)bezierPathWithRoundedRect:(NSRect)rect
                                    xRadius:(CGFloat)xRadius
                                    yRadius:(CGFloat)yRadius {
    NSBezierPath *const path = [[[NSBezierPath alloc] init] autorelease];
    path->shape_ = [kestrelbay::toNSString(
        QStringLiteral("%1 rounded by %2,%3").arg(words(rect)).arg(xRadius).arg(yRadius)) retain];
    return path;
}

- (void)dealloc {
    [shape_ release];
    [super dealloc];
}

- (void)fill {
    record(QStringLiteral("fill %1").arg(toQString(shape_)));
}
@end

namespace kestrelbay::macos {

void setApplicationWindows(NSArray *windows) {
    [applicationWindows release];
    applicationWindows = [windows copy];
}

void setScreens(const std::vector<QRect> &screens, std::optional<std::size_t> main) {
    NSMutableArray *const made = [NSMutableArray array];
    for (const QRect &frame : screens) {
        [made addObject:[[[NSScreen alloc] initWithFrame:NSMakeRect(frame.x(), frame.y(),
                                                                    frame.width(), frame.height())]
                            autorelease]];
    }
    [allScreens release];
    allScreens = [made copy];
    screenWithKeyWindow = main ? [allScreens objectAtIndex:*main] : nil;
}

}  // namespace kestrelbay::macos
