#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

/// One active tap at the head of the session's events, read by the main run loop as long as
/// this exists. Main thread.
class SessionTap {
public:
    /// Without the Accessibility permission there is none then.
    SessionTap(CGEventTapCallBack callback, void *userInfo);
    /// Takes the tap out of the system, which letting go of its port does not.
    ~SessionTap();
    SessionTap(const SessionTap &) = delete;
    SessionTap &operator=(const SessionTap &) = delete;

    [[nodiscard]] bool isThere() const { return static_cast<bool>(source_); }

    /// Nothing where the system no longer lets it see keys.
    void enable() const;
    /// Does the system have keys go through it?
    [[nodiscard]] bool isEnabled() const;

private:
    CFOwner<CFMachPortRef> port_;
    CFOwner<CFRunLoopSourceRef> source_;
};

}  // namespace kestrelbay
