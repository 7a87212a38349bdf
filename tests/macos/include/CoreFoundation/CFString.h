#pragma once

// Stands for <CoreFoundation/CFString.h>.

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

CFTypeID CFStringGetTypeID(void);
CFStringRef _Nullable CFStringCreateWithCharacters(CFAllocatorRef _Nullable alloc,
                                                   const UniChar *characters, CFIndex length);
CFIndex CFStringGetLength(CFStringRef string);
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar *buffer);

/// A string that lives as long as the program, the same one for the same text.
CFStringRef kestrelbayConstantString(const char *text);
#define CFSTR(text) kestrelbayConstantString("" text "")

#ifdef __cplusplus
}
#endif
