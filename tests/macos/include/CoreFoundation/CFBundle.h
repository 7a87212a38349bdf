#pragma once

// Stands for <CoreFoundation/CFBundle.h>.

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFDictionary.h>
#include <CoreFoundation/CFURL.h>

#ifdef __cplusplus
extern "C" {
#endif

CFDictionaryRef _Nonnull CFBundleCopyInfoDictionaryInDirectory(CFURLRef bundleURL);

#ifdef __cplusplus
}
#endif
