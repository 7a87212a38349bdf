#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

/// A thread of the back end with a GLib main context: where files are watched and
/// read, and where windows are looked at ahead of time. It sleeps when there is
/// nothing to do.
class BackgroundLoop {
public:
    using Work = std::function<void()>;

    BackgroundLoop();
    /// Does what was posted, and drops what was put off.
    ~BackgroundLoop();

    /// Runs the work on the thread of the loop, in the order of the calls. Any
    /// thread.
    void post(Work work);
    /// The same after a while. On the thread of the loop only.
    void postAfter(unsigned milliseconds, Work work);
    /// A source of events for the loop. Any thread.
    void attach(GSource *source) { g_source_attach(source, context_.get()); }

private:
    void runNext();

    std::mutex mutex_;
    std::deque<Work> waiting_;

    std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>> context_;
    std::unique_ptr<GMainLoop, ReleaseWith<g_main_loop_unref>> loop_;
    std::thread thread_;
};

}  // namespace kestrelbay
