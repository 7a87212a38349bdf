#include "platform/macos/desktop/MacServices.h"

#include <array>

#import <AppKit/NSAppearance.h>
#import <AppKit/NSApplication.h>
#import <AppKit/NSColor.h>
#import <AppKit/NSColorSpace.h>
#import <AppKit/NSImage.h>
#import <AppKit/NSSound.h>
#import <AppKit/NSStatusBarButton.h>
#import <AppKit/NSWindow.h>
#import <AppKit/NSWorkspace.h>
#include <os/log.h>

#include "platform/macos/cocoa/NSImages.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

namespace {

constexpr CGFloat kStatusSymbolSide = 16;

/// In the view or below it; nil where there is none.
NSStatusBarButton *statusButtonIn(NSView *view) {
    if ([view isKindOfClass:[NSStatusBarButton class]])
        return static_cast<NSStatusBarButton *>(view);
    for (NSView *subview in view.subviews)
        if (NSStatusBarButton *const button = statusButtonIn(subview))
            return button;
    return nil;
}

/// Qt keeps the item to itself, but its button is in one of the program's own windows.
NSStatusBarButton *statusButton() {
    for (NSWindow *window in [[NSApplication sharedApplication] windows])
        if (NSStatusBarButton *const button = statusButtonIn(window.contentView))
            return button;
    return nil;
}

}  // namespace

void MacSystemTray::drawSymbol(const QString &name, const QString &description) {
    @autoreleasepool {
        NSImage *const symbol = [NSImage
            imageWithSystemSymbolName:toNSString(name)
             accessibilityDescription:description.isEmpty() ? nil : toNSString(description)];
        if (!symbol)
            return;
        symbol.size = NSMakeSize(kStatusSymbolSide, kStatusSymbolSide);
        statusButton().image = symbol;
    }
}

bool MacSystemSettings::openAccessibilityPane() {
    @autoreleasepool {
        NSURL *const pane = [NSURL
            URLWithString:
                @"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"];
        return [[NSWorkspace sharedWorkspace] openURL:pane] != NO;
    }
}

QStringList MacSystemSounds::directories() const {
    return {QStringLiteral("/System/Library/Sounds")};
}

QStringList MacSystemSounds::suffixes() const {
    return {QStringLiteral(".aiff"), QStringLiteral(".aif")};
}

void MacSystemSounds::play(const QString &name) {
    @autoreleasepool {
        [[NSSound soundNamed:toNSString(name)] play];
    }
}

QImage MacSystemSymbols::image(const QString &name, QSize size) const {
    @autoreleasepool {
        return toQImage([NSImage imageWithSystemSymbolName:toNSString(name)
                                  accessibilityDescription:nil],
                        size);
    }
}

namespace {

/// Its parts are another ones in each appearance, and asking outside of one gives those of any.
QColor inForce(NSColor *color) {
    std::array<CGFloat, 4> parts{};
    CGFloat *const red = parts.data();
    [[[NSApplication sharedApplication] effectiveAppearance] performAsCurrentDrawingAppearance:^{
      [[color colorUsingColorSpace:[NSColorSpace sRGBColorSpace]] getRed:red
                                                                   green:red + 1
                                                                    blue:red + 2
                                                                   alpha:red + 3];
    }];
    return QColor::fromRgbF(float(parts[0]), float(parts[1]), float(parts[2]), float(parts[3]));
}

}  // namespace

QColor MacSystemTints::accent() const {
    @autoreleasepool {
        return inForce([NSColor controlAccentColor]);
    }
}

QColor MacSystemTints::onAccent() const {
    @autoreleasepool {
        return inForce([NSColor alternateSelectedControlTextColor]);
    }
}

QColor MacSystemTints::green() const {
    @autoreleasepool {
        return inForce([NSColor systemGreenColor]);
    }
}

QColor MacSystemTints::orange() const {
    @autoreleasepool {
        return inForce([NSColor systemOrangeColor]);
    }
}

QColor MacSystemTints::red() const {
    @autoreleasepool {
        return inForce([NSColor systemRedColor]);
    }
}

QColor MacSystemTints::secondaryLabel() const {
    @autoreleasepool {
        return inForce([NSColor secondaryLabelColor]);
    }
}

QColor MacSystemTints::tertiaryLabel() const {
    @autoreleasepool {
        return inForce([NSColor tertiaryLabelColor]);
    }
}

QColor MacSystemTints::separator() const {
    @autoreleasepool {
        return inForce([NSColor separatorColor]);
    }
}

static_assert(OS_LOG_TYPE_DEFAULT == 0x00 && OS_LOG_TYPE_ERROR == 0x10);

void UnifiedLog::write(const QString &line) {
    // Never let go of: the system keeps one for each name anyway.
    static auto *const log = os_log_create("org.kestrelbay.KestrelBay", "general");
    const QByteArray text = line.toUtf8();
    const bool warning = line.startsWith(QLatin1String("KestrelBay [WARN]"));
    os_log_with_type(log, warning ? OS_LOG_TYPE_ERROR : OS_LOG_TYPE_DEFAULT, "%{public}s",
                     text.constData());
}

}  // namespace kestrelbay
