#pragma once

// Stands for <CoreFoundation/CFData.h>.

#include <CoreFoundation/CFBase.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct OpaqueCFData *CFDataRef;

const unsigned char *CFDataGetBytePtr(CFDataRef data);

#ifdef __cplusplus
}
#endif
