#pragma once

// Stands for <CoreGraphics/CGEvent.h>.

#include <CoreGraphics/CGEventTypes.h>
#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

CFMachPortRef _Nullable CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place,
                                         CGEventTapOptions options, CGEventMask eventsOfInterest,
                                         CGEventTapCallBack callback, void *userInfo);
void CGEventTapEnable(CFMachPortRef tap, bool enable);
bool CGEventTapIsEnabled(CFMachPortRef tap);
int64_t CGEventGetIntegerValueField(CGEventRef _Nullable event, CGEventField field);
CGEventFlags CGEventGetFlags(CGEventRef _Nullable event);

#ifdef __cplusplus
}
#endif
