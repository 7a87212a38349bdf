#pragma once

// Stands for <CoreGraphics/CGEventTypes.h>.

#include <CoreFoundation/CoreFoundation.h>
#include <stdint.h>

typedef struct __CGEvent *CGEventRef;
typedef struct __CGEventTapProxy *CGEventTapProxy;
typedef uint64_t CGEventMask;
typedef uint64_t CGEventFlags;

typedef enum CGEventType : uint32_t {
    kCGEventNull = 0,
    kCGEventKeyDown = 10,
    kCGEventKeyUp = 11,
    kCGEventFlagsChanged = 12,
    kCGEventTapDisabledByTimeout = 0xFFFFFFFE,
    kCGEventTapDisabledByUserInput = 0xFFFFFFFF,
} CGEventType;

typedef enum CGEventField : uint32_t {
    kCGKeyboardEventAutorepeat = 8,
    kCGKeyboardEventKeycode = 9,
    kCGKeyboardEventKeyboardType = 10,
} CGEventField;

typedef enum CGEventTapLocation : uint32_t {
    kCGHIDEventTap = 0,
    kCGSessionEventTap = 1,
    kCGAnnotatedSessionEventTap = 2,
} CGEventTapLocation;

typedef enum CGEventTapPlacement : uint32_t {
    kCGHeadInsertEventTap = 0,
    kCGTailAppendEventTap = 1,
} CGEventTapPlacement;

typedef enum CGEventTapOptions : uint32_t {
    kCGEventTapOptionDefault = 0,
    kCGEventTapOptionListenOnly = 1,
} CGEventTapOptions;

typedef CGEventRef (*CGEventTapCallBack)(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                                         void *userInfo);
