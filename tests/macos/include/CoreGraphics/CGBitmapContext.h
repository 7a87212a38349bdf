#pragma once

// Stands for <CoreGraphics/CGBitmapContext.h> and, of <CoreGraphics/CGContext.h> and
// <CoreGraphics/CGImage.h>, what it takes.

#include <cstddef>
#include <cstdint>

#include <CoreGraphics/CGColorSpace.h>

extern "C" {

typedef struct OpaqueCGContext *CGContextRef;

typedef std::uint32_t CGImageAlphaInfo;
enum : CGImageAlphaInfo { kCGImageAlphaPremultipliedLast = 1 };

typedef std::uint32_t CGBitmapInfo;
enum : CGBitmapInfo { kCGBitmapByteOrder32Big = 4 << 12 };

CGContextRef CGBitmapContextCreate(void *data, std::size_t width, std::size_t height,
                                   std::size_t bitsPerComponent, std::size_t bytesPerRow,
                                   CGColorSpaceRef space, std::uint32_t bitmapInfo);
}
