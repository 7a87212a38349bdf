#pragma once

#include <chrono>
#include <functional>

#include "platform/linux/glib/BackgroundLoop.h"

namespace kestrelbay {

/// A timer of a background loop that can be started without waking the loop: whoever starts it
/// may be in a hurry, with no processor to spare for a thread that only goes to sleep again.
class LoopTimer {
public:
    /// The loop has to have ended when this object is destroyed. due is called on its thread.
    LoopTimer(BackgroundLoop &loop, std::function<void()> due);
    ~LoopTimer();
    LoopTimer(const LoopTimer &) = delete;
    LoopTimer &operator=(const LoopTimer &) = delete;

    /// Anew if it runs already. Any thread.
    void start(std::chrono::milliseconds time) const;

private:
    const std::function<void()> due_;
    const int descriptor_;
    const GSourcePtr source_;
};

}  // namespace kestrelbay
