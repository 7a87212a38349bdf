#pragma once

// Stands for <CoreGraphics/CGColorSpace.h>.

#include <CoreFoundation/CFString.h>

extern "C" {

typedef struct CGColorSpace *CGColorSpaceRef;

extern const CFStringRef kCGColorSpaceSRGB;

CGColorSpaceRef _Nullable CGColorSpaceCreateWithName(CFStringRef name);
}
