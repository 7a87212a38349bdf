#include "platform/macos/SessionTap.h"

namespace kestrelbay {

namespace {

constexpr CGEventMask kEvents =
    (CGEventMask{1} << kCGEventKeyDown) | (CGEventMask{1} << kCGEventFlagsChanged);

static_assert(kEvents == 0x1400);

}  // namespace

SessionTap::SessionTap(CGEventTapCallBack callback, void *userInfo)
    : port_(CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault,
                             kEvents, callback, userInfo)),
      source_(port_ ? CFMachPortCreateRunLoopSource(kCFAllocatorDefault, port_.get(), 0)
                    : nullptr) {
    if (!source_)
        return;
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    enable();
}

SessionTap::~SessionTap() {
    if (source_) {
        CGEventTapEnable(port_.get(), false);
        CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    }
    if (port_)
        CFMachPortInvalidate(port_.get());
}

void SessionTap::enable() const {
    CGEventTapEnable(port_.get(), true);
}

bool SessionTap::isEnabled() const {
    return CGEventTapIsEnabled(port_.get());
}

}  // namespace kestrelbay
