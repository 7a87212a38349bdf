#pragma once

#include <set>
#include <vector>

#include <CoreGraphics/CoreGraphics.h>

#include "platform/EventTap.h"
#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

/// An active tap at the head of the session's events, read by the main run loop. It
/// can be made only with the Accessibility permission.
class MacEventTap final : public EventTap {
public:
    MacEventTap() = default;
    ~MacEventTap() override;
    MacEventTap(const MacEventTap &) = delete;
    MacEventTap &operator=(const MacEventTap &) = delete;

    [[nodiscard]] bool install(Handlers handlers) override;
    [[nodiscard]] TapProblem problem() const override { return problem_; }
    void enable() override;
    void remove() override;
    void setWantedHotkeys(const std::vector<Hotkey> &hotkeys) override { wanted_ = hotkeys; }
    bool setRecording(bool recording) override;
    /// Nothing: the system sees to it that no key waits for long.
    void deliverWaiting() override {}
    /// None: a tap sees keys before whoever else wants them.
    [[nodiscard]] std::vector<RefusedHotkey> refusedHotkeys() const override { return {}; }

private:
    static CGEventRef callback(CGEventTapProxy proxy, CGEventType type, CGEventRef event,
                               void *userInfo);
    [[nodiscard]] EventVerdict handle(CGEventType type, CGEventRef event);
    [[nodiscard]] EventVerdict handleKeyDown(CGEventRef event);
    [[nodiscard]] EventVerdict deliver(EventType type, KeyCode keyCode, ModifierFlags flags) const;
    [[nodiscard]] bool isWanted(KeyCode keyCode) const;

    CFOwner<CFMachPortRef> tap_;
    CFOwner<CFRunLoopSourceRef> source_;
    Handlers handlers_;
    TapProblem problem_ = TapProblem::None;
    std::vector<Hotkey> wanted_;
    /// Toggled by every change that was delivered and kept across remove(), which is
    /// how whoever matches the hotkeys keeps his own.
    std::set<KeyCode> held_;
    /// Keys whose last press was swallowed. They may be up by now, which the tap is not told.
    std::set<KeyCode> swallowed_;
    bool isRecording_ = false;
};

}  // namespace kestrelbay
