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

    /// Disables the taps that there are without telling them.
    void disableSilently();
    /// From now on no tap can be enabled, though it can be made.
    void refuseEnabling(bool refuse) { isEnablingRefused_ = refuse; }
    /// The user takes the permission back: neither can be done, and there are no exceptions.
    void withdrawPermission();
    /// How many taps there are, enabled or not, whoever still holds their ports.
    [[nodiscard]] int count() const { return count_; }

    /// What becomes of an event on its way past the taps that read it.
    enum class Fate { Unseen, Passed, Swallowed };
    /// The flags are what CGEventGetFlags() gives.
    Fate post(CGEventType type, std::int64_t keyCode, CGEventFlags flags, bool isRepeat = false);
    /// Calls the newest tap's function with this for user data.
    Fate postTo(void *userInfo, CGEventType type, std::int64_t keyCode);

    // For the functions that are faked:
    [[nodiscard]] bool areTapsRefused() const { return areTapsRefused_; }
    [[nodiscard]] bool areSourcesRefused() const { return areSourcesRefused_; }
    [[nodiscard]] bool isEnablingRefused() const { return isEnablingRefused_; }
    void changeCount(int by) { count_ += by; }
    /// Those the main run loop reads in the common modes.
    std::set<CFRunLoopSourceRef> &sources() { return sources_; }
    void setNewest(CGEventTapCallBack callback) { newest_ = callback; }

private:
    std::set<CFRunLoopSourceRef> sources_;
    CGEventTapCallBack newest_ = nullptr;
    bool areTapsRefused_ = false;
    bool areSourcesRefused_ = false;
    bool isEnablingRefused_ = false;
    int count_ = 0;
};

}  // namespace kestrelbay::macos
