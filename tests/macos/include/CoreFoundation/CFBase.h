#pragma once

// Stands for <CoreFoundation/CFBase.h>.

#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef UInt16 UniChar;
typedef const void *CFTypeRef;
typedef const struct __CFAllocator *CFAllocatorRef;
typedef const struct __CFString *CFStringRef;

typedef struct {
    CFIndex location;
    CFIndex length;
} CFRange;

extern const CFAllocatorRef kCFAllocatorDefault;

static inline CFRange CFRangeMake(CFIndex location, CFIndex length) {
    CFRange range;
    range.location = location;
    range.length = length;
    return range;
}

CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);

#ifdef __cplusplus
}
#endif
