#include "fakes/FakeColors.h"

#import <AppKit/NSAppearance.h>
#import <AppKit/NSApplication.h>
#import <AppKit/NSColor.h>
#import <AppKit/NSColorSpace.h>

#include <utility>

#include <QHash>

#include "fakes/MacJournal.h"
#include "platform/macos/cocoa/Strings.h"

using kestrelbay::toQString;
using kestrelbay::macos::record;

namespace {

QHash<QString, std::pair<QColor, QColor>> colors;
bool isDarkAppearance = false;
/// That in which colours are asked for.
bool isDrawingDark = false;

NSColor *named(NSString *name) {
    NSColor *const color = [[[NSColor alloc] init] autorelease];
    color->name_ = [name copy];
    return color;
}

}  // namespace

@implementation NSColor
+ (NSColor *)blackColor {
    return named(@"blackColor");
}

+ (NSColor *)controlAccentColor {
    return named(@"controlAccentColor");
}

+ (NSColor *)alternateSelectedControlTextColor {
    return named(@"alternateSelectedControlTextColor");
}

+ (NSColor *)secondaryLabelColor {
    return named(@"secondaryLabelColor");
}

+ (NSColor *)tertiaryLabelColor {
    return named(@"tertiaryLabelColor");
}

+ (NSColor *)separatorColor {
    return named(@"separatorColor");
}

+ (NSColor *)systemGreenColor {
    return named(@"systemGreenColor");
}

+ (NSColor *)systemOrangeColor {
    return named(@"systemOrangeColor");
}

+ (NSColor *)systemRedColor {
    return named(@"systemRedColor");
}

- (void)dealloc {
    [name_ release];
    [super dealloc];
}

- (NSColor *)colorUsingColorSpace:(NSColorSpace *)space {
    const auto [light, dark] = colors.value(toQString(name_));
    const QColor color = isDrawingDark ? dark : light;
    NSColor *const converted = [[[NSColor alloc] init] autorelease];
    converted->parts_[0] = CGFloat(color.redF());
    converted->parts_[1] = CGFloat(color.greenF());
    converted->parts_[2] = CGFloat(color.blueF());
    converted->parts_[3] = CGFloat(color.alphaF());
    return space ? converted : nil;
}

- (void)getRed:(CGFloat *)red green:(CGFloat *)green blue:(CGFloat *)blue alpha:(CGFloat *)alpha {
    if (name_)
        [NSException raise:NSInternalInconsistencyException format:@"a colour without parts"];
    *red = parts_[0];
    *green = parts_[1];
    *blue = parts_[2];
    *alpha = parts_[3];
}

- (void)set {
    record(QStringLiteral("paint in black"));
}
@end

@implementation NSColorSpace
+ (NSColorSpace *)sRGBColorSpace {
    return [[[NSColorSpace alloc] init] autorelease];
}
@end

@implementation NSAppearance
- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    const bool before = std::exchange(isDrawingDark, isDarkAppearance);
    block();
    isDrawingDark = before;
}
@end

@implementation NSApplication (NSAppearanceCustomization)
- (NSAppearance *)effectiveAppearance {
    return [[[NSAppearance alloc] init] autorelease];
}
@end

namespace kestrelbay::macos {

void setSystemColor(const QString &name, const QColor &light, const QColor &dark) {
    colors.insert(name, {light, dark});
}

void setDarkAppearance(bool isDark) {
    isDarkAppearance = isDark;
}

}  // namespace kestrelbay::macos
