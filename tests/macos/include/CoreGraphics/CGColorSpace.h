#pragma once

// Stands for <CoreGraphics/CGColorSpace.h>.

#include <CoreFoundation/CFString.h>

extern "C" {

typedef struct OpaqueCGColorSpace *CGColorSpaceRef;

extern const CFStringRef kCGColorSpaceSRGB;

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name);
}
