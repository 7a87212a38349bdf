#pragma once

#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include <QString>
#include <QTemporaryDir>

struct wl_display;
struct wl_event_source;

namespace kestrelbay::testing {

/// The thread that a stand-in for a compositor runs on, and its socket.
class ServerThread {
public:
    ServerThread();
    ~ServerThread();
    ServerThread(const ServerThread &) = delete;
    ServerThread &operator=(const ServerThread &) = delete;

    [[nodiscard]] QString socketPath() const { return folder_.filePath(QStringLiteral("socket")); }
    /// For that thread, and for others before start().
    [[nodiscard]] wl_display *display() const { return display_; }
    void start();

    /// On the thread; returns when it is done and clients have been told.
    void run(const std::function<void()> &work);
    /// Nothing is read or sent any more until the end.
    void hang();
    /// Hangs up on all clients, and is there for new ones.
    void hangUp();
    /// Hangs up, and ends. What clients own calls its destructors within.
    void stop();

private:
    void serve();
    void post(std::packaged_task<void()> task);

    const QTemporaryDir folder_;
    wl_display *const display_;
    const int wake_;
    wl_event_source *const waking_;
    std::promise<void> end_;
    bool isEnded_ = false;
    std::mutex mutex_;
    std::vector<std::packaged_task<void()>> works_;
    std::thread thread_;
};

}  // namespace kestrelbay::testing
