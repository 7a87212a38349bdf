#include "platform/macos/cocoa/NSImages.h"

#import <AppKit/NSGraphicsContext.h>
#import <AppKit/NSImage.h>
#include <CoreGraphics/CGBitmapContext.h>
#include <CoreGraphics/CGColorSpace.h>

#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

namespace {

/// For a bitmap context, which counts from the lower left corner.
NSRect fitted(NSSize image, QSize pixels) {
    const QSizeF size = QSizeF(image.width, image.height).scaled(pixels, Qt::KeepAspectRatio);
    return NSMakeRect((pixels.width() - size.width()) / 2, (pixels.height() - size.height()) / 2,
                      size.width(), size.height());
}

}  // namespace

QImage toQImage(NSImage *image, QSize pixels) {
    if (!image || pixels.isEmpty())
        return {};
    @autoreleasepool {
        QImage result(pixels, QImage::Format_RGBA8888_Premultiplied);
        result.fill(Qt::transparent);
        const CFOwner<CGColorSpaceRef> colors(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
        const CFOwner<CGContextRef> context(CGBitmapContextCreate(
            result.bits(), static_cast<std::size_t>(result.width()),
            static_cast<std::size_t>(result.height()), 8,
            static_cast<std::size_t>(result.bytesPerLine()), colors.get(),
            // In memory red comes first, as Qt has it.
            static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedLast) | kCGBitmapByteOrder32Big));
        if (!context)
            return {};
        [NSGraphicsContext saveGraphicsState];
        [NSGraphicsContext
            setCurrentContext:[NSGraphicsContext graphicsContextWithCGContext:context.get()
                                                                      flipped:NO]];
        [image drawInRect:fitted(image.size, pixels)
                 fromRect:NSZeroRect
                operation:NSCompositingOperationSourceOver
                 fraction:1];
        [NSGraphicsContext restoreGraphicsState];
        return result;
    }
}

}  // namespace kestrelbay
