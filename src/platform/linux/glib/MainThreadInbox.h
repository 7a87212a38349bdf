#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include <QObject>

namespace kestrelbay {

/// What other threads have to tell one object of the main thread. To be made on the
/// main thread and closed there when that object ends.
class MainThreadInbox : public std::enable_shared_from_this<MainThreadInbox> {
public:
    [[nodiscard]] static std::shared_ptr<MainThreadInbox> make();

    /// Runs the work on the main thread, in the order of the calls; drops it once
    /// the inbox is closed. Any thread.
    void post(std::function<void()> work);

    /// Runs what is posted until the condition holds, without the event loop. False
    /// when it did not within the time. Main thread.
    bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds timeout);

    /// Nothing runs any more. Main thread.
    void close();

private:
    MainThreadInbox() = default;
    void runAll();

    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> waiting_;
    std::unique_ptr<QObject> receiver_ = std::make_unique<QObject>();
};

}  // namespace kestrelbay
