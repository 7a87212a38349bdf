#pragma once

// Stands for <CoreFoundation/CFNotificationCenter.h>.

#include <CoreFoundation/CFBase.h>
#include <CoreFoundation/CFDictionary.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct __CFNotificationCenter *CFNotificationCenterRef;
typedef CFStringRef CFNotificationName;
typedef enum CFNotificationSuspensionBehavior : CFIndex {
    CFNotificationSuspensionBehaviorDeliverImmediately = 4,
} CFNotificationSuspensionBehavior;

typedef void (*CFNotificationCallback)(CFNotificationCenterRef center, void *observer,
                                       CFNotificationName name, const void *object,
                                       CFDictionaryRef userInfo);

CFNotificationCenterRef CFNotificationCenterGetDistributedCenter(void);
void CFNotificationCenterAddObserver(CFNotificationCenterRef center, const void *observer,
                                     CFNotificationCallback callBack, CFStringRef name,
                                     const void *object,
                                     CFNotificationSuspensionBehavior suspensionBehavior);
void CFNotificationCenterRemoveEveryObserver(CFNotificationCenterRef center, const void *observer);

#ifdef __cplusplus
}
#endif
