#pragma once

// Stands for <Carbon/Carbon.h>: what the back end uses of HIToolbox/TextInputSources.h,
// HIToolbox/Events.h, HIToolbox/CarbonEventsCore.h, CarbonCore/UnicodeUtilities.h and
// CarbonCore/LowMem.h.

#include <CoreFoundation/CoreFoundation.h>
#include <MacTypes.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
    shiftKey = 1 << 9,
};
enum {
    kUCKeyActionDisplay = 3,
};
enum {
    kUCKeyTranslateNoDeadKeysMask = 1,
};

typedef struct UCKeyboardLayout UCKeyboardLayout;

OSStatus UCKeyTranslate(const UCKeyboardLayout *layout, UInt16 virtualKeyCode, UInt16 keyAction,
                        UInt32 modifierKeyState, UInt32 keyboardType, OptionBits options,
                        UInt32 *deadKeyState, UniCharCount maxStringLength,
                        UniCharCount *actualStringLength, UniChar unicodeString[]);
UInt8 LMGetKbdType(void);

typedef struct __TISInputSource *TISInputSourceRef;

extern const CFStringRef kTISPropertyUnicodeKeyLayoutData;
extern const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged;

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource(void);
void *TISGetInputSourceProperty(TISInputSourceRef inputSource, CFStringRef propertyKey);

Boolean IsSecureEventInputEnabled(void);

#ifdef __cplusplus
}
#endif
