#include "platform/macos/desktop/MacKeyboardLayout.h"

#include <array>

#include <Carbon/Carbon.h>

#include "keys/KeyCap.h"
#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

namespace {

static_assert(kUCKeyActionDisplay == 3 && kUCKeyTranslateNoDeadKeysMask == 1 && shiftKey == 0x200);

QString typed(const UCKeyboardLayout *layout, KeyCode keyCode, std::uint32_t modifiers) {
    std::array<UniChar, 4> text{};
    UniCharCount length = 0;
    UInt32 noDeadKeys = 0;
    // Modifiers are those of an event record, of which this takes the high byte.
    const OSStatus status = UCKeyTranslate(
        layout, toNumber(keyCode), kUCKeyActionDisplay, modifiers >> 8U & 0xffU, LMGetKbdType(),
        kUCKeyTranslateNoDeadKeysMask, &noDeadKeys, text.size(), &length, text.data());
    return status == noErr ? QString::fromUtf16(reinterpret_cast<const char16_t *>(text.data()),
                                                static_cast<qsizetype>(length))
                           : QString();
}

}  // namespace

MacKeyboardLayout::MacKeyboardLayout() {
    CFNotificationCenterAddObserver(
        CFNotificationCenterGetDistributedCenter(), this,
        [](CFNotificationCenterRef, void *self, CFNotificationName, const void *, CFDictionaryRef) {
            static_cast<const MacKeyboardLayout *>(self)->changed();
        },
        kTISNotifySelectedKeyboardInputSourceChanged, nullptr,
        CFNotificationSuspensionBehaviorDeliverImmediately);
}

MacKeyboardLayout::~MacKeyboardLayout() {
    CFNotificationCenterRemoveEveryObserver(CFNotificationCenterGetDistributedCenter(), this);
}

void MacKeyboardLayout::changed() const {
    if (const auto handler = handler_)
        handler();
}

QString MacKeyboardLayout::printedOn(KeyCode keyCode) const {
    const CFOwner<TISInputSourceRef> source(TISCopyCurrentKeyboardLayoutInputSource());
    if (!source)
        return {};
    const auto *const data = static_cast<CFDataRef>(
        TISGetInputSourceProperty(source.get(), kTISPropertyUnicodeKeyLayoutData));
    if (!data)
        return {};
    const auto *const layout = reinterpret_cast<const UCKeyboardLayout *>(CFDataGetBytePtr(data));
    return keyCap(typed(layout, keyCode, 0), typed(layout, keyCode, shiftKey));
}

}  // namespace kestrelbay
