#pragma once

// Stands for <CoreFoundation/CFMachPort.h>.

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFRunLoop.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __CFMachPort *CFMachPortRef;

CFRunLoopSourceRef _Nullable CFMachPortCreateRunLoopSource(CFAllocatorRef _Nullable allocator,
                                                           CFMachPortRef port, CFIndex order);
void CFMachPortInvalidate(CFMachPortRef port);

#ifdef __cplusplus
}
#endif
