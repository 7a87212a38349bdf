#include "fakes/InputSources.h"

#include <Carbon/Carbon.h>

#include <algorithm>
#include <vector>

#include "fakes/Bridge.h"

using kestrelbay::macos::cf;
using kestrelbay::macos::ns;
using kestrelbay::macos::TypedTexts;

namespace {

struct Observer {
    const void *self;
    CFNotificationCallback callback;
};

/// The only byte of a layout's data.
constexpr unsigned char kLayout = 7;
constexpr UInt8 kKeyboardType = 40;

TypedTexts texts;
bool hasLayout = true;
std::vector<Observer> observers;

CFNotificationCenterRef center() {
    return reinterpret_cast<CFNotificationCenterRef>(&observers);
}

void tell() {
    const auto told = observers;
    for (const Observer &observer : told)
        observer.callback(center(), const_cast<void *>(observer.self),
                          kTISNotifySelectedKeyboardInputSourceChanged, nullptr, nullptr);
}

}  // namespace

const CFStringRef kTISPropertyUnicodeKeyLayoutData = CFSTR("TISPropertyUnicodeKeyLayoutData");
const CFStringRef kTISNotifySelectedKeyboardInputSourceChanged =
    CFSTR("com.apple.Carbon.TISNotifySelectedKeyboardInputSourceChanged");

TISInputSourceRef TISCopyCurrentKeyboardLayoutInputSource() {
    return reinterpret_cast<TISInputSourceRef>([[NSData alloc] initWithBytes:&kLayout length:1]);
}

void *TISGetInputSourceProperty(TISInputSourceRef source, CFStringRef key) {
    return hasLayout && key == kTISPropertyUnicodeKeyLayoutData ? source : nullptr;
}

const unsigned char *CFDataGetBytePtr(CFDataRef data) {
    return static_cast<const unsigned char *>([ns<NSData *>(data) bytes]);
}

UInt8 LMGetKbdType() {
    return kKeyboardType;
}

OSStatus UCKeyTranslate(const UCKeyboardLayout *layout, UInt16 virtualKeyCode, UInt16 keyAction,
                        UInt32 modifierKeyState, UInt32 keyboardType, OptionBits options,
                        UInt32 * /*deadKeyState*/, UniCharCount maxStringLength,
                        UniCharCount *actualStringLength, UniChar unicodeString[]) {
    if (*reinterpret_cast<const unsigned char *>(layout) != kLayout ||
        keyAction != kUCKeyActionDisplay || keyboardType != kKeyboardType ||
        options != kUCKeyTranslateNoDeadKeysMask)
        return -50;  // paramErr
    const auto found = texts.find(virtualKeyCode);
    if (found == texts.end())
        return -50;
    constexpr UInt32 kShift = 2;
    const QString &typed = modifierKeyState == kShift ? found->second.second : found->second.first;
    *actualStringLength = std::min(maxStringLength, static_cast<UniCharCount>(typed.size()));
    std::copy_n(typed.utf16(), *actualStringLength, unicodeString);
    return noErr;
}

CFNotificationCenterRef CFNotificationCenterGetDistributedCenter() {
    return center();
}

void CFNotificationCenterAddObserver(CFNotificationCenterRef /*center*/, const void *observer,
                                     CFNotificationCallback callBack, CFStringRef name,
                                     const void * /*object*/,
                                     CFNotificationSuspensionBehavior suspensionBehavior) {
    if (name == kTISNotifySelectedKeyboardInputSourceChanged &&
        suspensionBehavior == CFNotificationSuspensionBehaviorDeliverImmediately)
        observers.push_back({observer, callBack});
}

void CFNotificationCenterRemoveEveryObserver(CFNotificationCenterRef /*center*/,
                                             const void *observer) {
    std::erase_if(observers, [observer](const Observer &each) { return each.self == observer; });
}

namespace kestrelbay::macos {

void selectLayout(TypedTexts typed) {
    texts = std::move(typed);
    hasLayout = true;
    tell();
}

void selectSourceWithoutLayout() {
    hasLayout = false;
    tell();
}

std::size_t layoutObservers() {
    return observers.size();
}

}  // namespace kestrelbay::macos
