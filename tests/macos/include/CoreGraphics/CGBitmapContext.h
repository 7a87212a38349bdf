#pragma once

// Stands for <CoreGraphics/CGBitmapContext.h> and, of <CoreGraphics/CGContext.h> and
// <CoreGraphics/CGImage.h>, what it takes.

#include <stddef.h>
#include <stdint.h>

#include <CoreGraphics/CGColorSpace.h>

extern "C" {

typedef struct CGContext *CGContextRef;

typedef enum CGImageAlphaInfo : uint32_t {
    kCGImageAlphaPremultipliedLast = 1,
} CGImageAlphaInfo;

typedef uint32_t CGBitmapInfo;
enum : CGBitmapInfo { kCGBitmapByteOrder32Big = 4 << 12 };

CGContextRef _Nullable CGBitmapContextCreate(void *data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef _Nullable space,
                                             CGBitmapInfo bitmapInfo);
}
