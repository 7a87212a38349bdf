#pragma once

// Stands for <ApplicationServices/ApplicationServices.h> and of it for
// <HIServices/AXError.h> and <HIServices/AXUIElement.h>.

#include <CoreFoundation/CoreFoundation.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum AXError : SInt32 {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
} AXError;

typedef const struct __AXUIElement *AXUIElementRef;

Boolean AXIsProcessTrusted(void);
CFTypeID AXUIElementGetTypeID(void);
AXUIElementRef _Nonnull AXUIElementCreateApplication(pid_t pid);
/// What is written to value is the caller's to release.
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef *value);
AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                     CFTypeRef value);
AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action);

#ifdef __cplusplus
}
#endif
