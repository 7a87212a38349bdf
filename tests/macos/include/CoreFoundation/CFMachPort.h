#pragma once

// Stands for <CoreFoundation/CFMachPort.h>.

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFRunLoop.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct OpaqueCFMachPort *CFMachPortRef;

CFRunLoopSourceRef CFMachPortCreateRunLoopSource(CFAllocatorRef allocator, CFMachPortRef port,
                                                 CFIndex order);

#ifdef __cplusplus
}
#endif
