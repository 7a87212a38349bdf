#pragma once

#include <cstdint>
#include <set>

#include <CoreGraphics/CoreGraphics.h>

namespace kestrelbay::macos {

/// The event taps of the fake system. Made afresh for a test, which it lasts.
class EventTaps {
public:
    EventTaps();
    ~EventTaps();
    EventTaps(const EventTaps &) = delete;
    EventTaps &operator=(const EventTaps &) = delete;

    static EventTaps &shared();

    /// From now on the functions that create them return null.
    void refuseTaps(bool refuse) { areTapsRefused_ = refuse; }
    void refuseSources(bool refuse) { areSourcesRefused_ = refuse; }

    /// What becomes of an event on its way past the taps that read it.
    enum class Fate { Unseen, Passed, Swallowed };
    /// The flags are what CGEventGetFlags() gives.
    Fate post(CGEventType type, std::int64_t keyCode, CGEventFlags flags, bool isRepeat = false);
    /// Calls the newest tap's function with this for user data.
    Fate postTo(void *userInfo, CGEventType type, std::int64_t keyCode);

    // For the functions that are faked:
    [[nodiscard]] bool areTapsRefused() const { return areTapsRefused_; }
    [[nodiscard]] bool areSourcesRefused() const { return areSourcesRefused_; }
    /// Those the main run loop reads in the common modes.
    std::set<CFRunLoopSourceRef> &sources() { return sources_; }
    void setNewest(CGEventTapCallBack callback) { newest_ = callback; }

private:
    std::set<CFRunLoopSourceRef> sources_;
    CGEventTapCallBack newest_ = nullptr;
    bool areTapsRefused_ = false;
    bool areSourcesRefused_ = false;
};

}  // namespace kestrelbay::macos
