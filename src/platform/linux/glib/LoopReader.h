#pragma once

#include <chrono>
#include <functional>

#include "platform/linux/glib/BackgroundLoop.h"

namespace kestrelbay {

/// Looks after a descriptor on a background loop.
class LoopReader {
public:
    /// The loop has to have ended when this object is destroyed, or the object has to be used
    /// on the loop's thread only. `readable` is called there as long as there is something to
    /// read, and when the other end has gone.
    LoopReader(BackgroundLoop &loop, int descriptor, std::function<void()> readable);
    ~LoopReader();
    LoopReader(const LoopReader &) = delete;
    LoopReader &operator=(const LoopReader &) = delete;

    // On the loop's thread:
    /// For so long the loop does not look at the descriptor.
    void pause(std::chrono::milliseconds time);
    void stop();

private:
    struct Source;

    void dispatch();

    const std::function<void()> readable_;
    const GSourcePtr source_;
    void *const watch_;
};

}  // namespace kestrelbay
