#include "fakes/FakeImages.h"

#include <algorithm>
#include <array>

#include <Block.h>

#include "fakes/Bridge.h"
#import "fakes/FakeObject.h"
#include "fakes/MacJournal.h"
#include "platform/macos/cocoa/Strings.h"

using kestrelbay::toNSString;
using kestrelbay::toQString;
using kestrelbay::macos::cf;
using kestrelbay::macos::created;
using kestrelbay::macos::ns;
using kestrelbay::macos::record;

namespace {

NSString *symbolName = nil;
NSSize symbolSize;
bool areBitmapsRefused = false;

thread_local NSGraphicsContext *currentContext = nil;
thread_local NSGraphicsContext *savedContext = nil;

}  // namespace

/// What a CGContextRef is here.
@interface FakeBitmap : NSObject {
@public
    unsigned char *data;
    std::size_t height;
    std::size_t bytesPerRow;
}
@end

@implementation FakeBitmap
@end

const CFStringRef kCGColorSpaceSRGB = CFSTR("kCGColorSpaceSRGB");

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) {
    return const_cast<CGColorSpaceRef>(created<const struct CGColorSpace *>(ns<NSString *>(name)));
}

CGContextRef CGBitmapContextCreate(void *data, std::size_t width, std::size_t height,
                                   std::size_t bitsPerComponent, std::size_t bytesPerRow,
                                   CGColorSpaceRef space, std::uint32_t bitmapInfo) {
    if (areBitmapsRefused)
        return nullptr;
    record(QStringLiteral("bitmap %1x%2, %3 bits, %4 bytes a row, %5, info %6")
               .arg(width)
               .arg(height)
               .arg(bitsPerComponent)
               .arg(bytesPerRow)
               .arg(toQString(ns<NSString *>(space)))
               .arg(bitmapInfo));
    FakeBitmap *const bitmap = [[FakeBitmap alloc] init];
    bitmap->data = static_cast<unsigned char *>(data);
    bitmap->height = height;
    bitmap->bytesPerRow = bytesPerRow;
    return const_cast<CGContextRef>(cf<const struct CGContext *>(bitmap));
}

@implementation NSGraphicsContext
@synthesize CGContext = context_;

+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)context flipped:(BOOL)flipped {
    record(QStringLiteral("graphics context, flipped %1").arg(int{flipped}));
    NSGraphicsContext *const graphics = [[[NSGraphicsContext alloc] init] autorelease];
    graphics->context_ = context;
    return graphics;
}

+ (NSGraphicsContext *)currentContext {
    return currentContext;
}

+ (void)setCurrentContext:(NSGraphicsContext *)context {
    currentContext = context;
}

+ (void)saveGraphicsState {
    savedContext = currentContext;
}

+ (void)restoreGraphicsState {
    currentContext = savedContext;
}
@end

@implementation NSImage
@synthesize size = size_;
@synthesize capInsets = capInsets_;
@synthesize resizingMode = resizingMode_;

- (instancetype)init {
    if ((self = [super init]))
        kestrelbay::macos::objectWasMade();
    return self;
}

+ (NSImage *)redImageWithSize:(NSSize)size {
    NSImage *const image = [[[NSImage alloc] init] autorelease];
    image->size_ = size;
    return image;
}

+ (NSImage *)imageWithSystemSymbolName:(NSString *)name
              accessibilityDescription:(NSString *)description {
    record(
        QStringLiteral("symbol %1, description %2").arg(toQString(name), toQString(description)));
    if (![name isEqualToString:symbolName])
        return nil;
    NSImage *const image = [NSImage redImageWithSize:symbolSize];
    image->accessibilityDescription_ = [description copy];
    return image;
}

+ (NSImage *)imageWithSize:(NSSize)size
                   flipped:(BOOL)flipped
            drawingHandler:(BOOL (^)(NSRect bounds))handler {
    NSImage *const image = [NSImage redImageWithSize:size];
    image->drawingHandler_ = Block_copy(handler);
    return image;
}

- (void)dealloc {
    kestrelbay::macos::objectIsGone();
    if (drawingHandler_)
        Block_release(drawingHandler_);
    [accessibilityDescription_ release];
    [super dealloc];
}

- (NSString *)shownDescription {
    return accessibilityDescription_;
}

- (BOOL)drawIntoJournal {
    return drawingHandler_(NSMakeRect(0, 0, size_.width, size_.height));
}

- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)fromRect
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    record(QStringLiteral("draw at %1,%2 %3x%4, from empty %5, operation %6, fraction %7")
               .arg(rect.origin.x)
               .arg(rect.origin.y)
               .arg(rect.size.width)
               .arg(rect.size.height)
               .arg(int{NSIsEmptyRect(fromRect)})
               .arg(operation)
               .arg(fraction));
    const FakeBitmap *const bitmap = ns<FakeBitmap *>([NSGraphicsContext currentContext].CGContext);
    constexpr std::array<unsigned char, 4> kRed{0xFF, 0, 0, 0xFF};
    const auto pixels = [](CGFloat points) { return static_cast<std::size_t>(points); };
    for (std::size_t y = pixels(NSMinY(rect)); y < pixels(NSMaxY(rect)); ++y) {
        // The first row in memory is the uppermost.
        unsigned char *const row = bitmap->data + (bitmap->height - 1 - y) * bitmap->bytesPerRow;
        for (std::size_t x = pixels(NSMinX(rect)); x < pixels(NSMaxX(rect)); ++x)
            std::ranges::copy(kRed, row + 4 * x);
    }
}
@end

namespace kestrelbay::macos {

void setSystemSymbol(const QString &name, NSSize size) {
    [symbolName release];
    symbolName = [toNSString(name) retain];
    symbolSize = size;
}

void refuseBitmaps(bool refuse) {
    areBitmapsRefused = refuse;
}

}  // namespace kestrelbay::macos
