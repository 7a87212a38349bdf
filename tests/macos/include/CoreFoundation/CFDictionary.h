#pragma once

// Stands for <CoreFoundation/CFDictionary.h>.

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CFDictionary *CFDictionaryRef;

CFTypeID CFDictionaryGetTypeID(void);
const void *CFDictionaryGetValue(CFDictionaryRef dictionary, const void *key);

#ifdef __cplusplus
}
#endif
