#pragma once

// Stands for <CoreFoundation/CFURL.h>.

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CFURL *CFURLRef;

typedef enum CFURLPathStyle : CFIndex {
    kCFURLPOSIXPathStyle = 0,
    kCFURLHFSPathStyle = 1,
    kCFURLWindowsPathStyle = 2,
} CFURLPathStyle;

CFURLRef _Nullable CFURLCreateWithFileSystemPath(CFAllocatorRef _Nullable allocator,
                                                 CFStringRef filePath, CFURLPathStyle pathStyle,
                                                 Boolean isDirectory);

#ifdef __cplusplus
}
#endif
