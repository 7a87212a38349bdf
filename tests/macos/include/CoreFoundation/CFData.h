#pragma once

// Stands for <CoreFoundation/CFData.h>.

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __CFData *CFDataRef;

const UInt8 *CFDataGetBytePtr(CFDataRef data);

#ifdef __cplusplus
}
#endif
