#pragma once

// Stands for <CoreGraphics/CGEvent.h>.

#include <CoreGraphics/CGEventTypes.h>
#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

CFMachPortRef CGEventTapCreate(CGEventTapLocation tap, CGEventTapPlacement place,
                               CGEventTapOptions options, CGEventMask eventsOfInterest,
                               CGEventTapCallBack callback, void *userInfo);
void CGEventTapEnable(CFMachPortRef tap, bool enable);
int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field);
CGEventFlags CGEventGetFlags(CGEventRef event);

#ifdef __cplusplus
}
#endif
