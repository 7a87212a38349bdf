#pragma once

#include <chrono>
#include <cstddef>
#include <memory>

#include <QString>

struct wl_callback;
struct wl_display;
struct wl_event_queue;

namespace kestrelbay::wayland {

/// Lets go of an object without a word to the compositor.
struct ReleaseProxy {
    template <typename Object>
    void operator()(Object *object) const {
        release(object);
    }

private:
    static void release(void *proxy);
};

/// A connection to a Wayland compositor. Once it is broken it stays so, and error() says why;
/// objects that were made on it have to be gone before it is. Any one thread at a time.
///
/// Listeners are called by the functions below only.
class Connection {
public:
    /// Compositors answer within a millisecond; this is for busy machines.
    static constexpr std::chrono::milliseconds kPatience{1000};

    explicit Connection(const QString &socketPath, std::chrono::milliseconds patience = kPatience);
    /// Shares one that somebody else has made, and closes later: its own events are told here, and
    /// nobody else's.
    explicit Connection(wl_display &shared, std::chrono::milliseconds patience = kPatience);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    [[nodiscard]] bool isOpen() const { return error_.isEmpty(); }
    /// As one phrase; empty while it is open.
    [[nodiscard]] const QString &error() const { return error_; }
    /// To ask for objects of this connection. Null when there never was a compositor.
    [[nodiscard]] wl_display *display() const { return requests_.get(); }
    /// Readable when there are events, and when the compositor has gone. -1 when there never was
    /// one.
    [[nodiscard]] int descriptor() const;

    /// Sends what has been asked for. False when the compositor does not take it.
    bool flush();
    /// Tells listeners what has come, without waiting: how many events that was.
    std::size_t takeInEvents();

    /// Waits until the compositor has worked off all requests so far, and tells listeners what has
    /// come. False when it is broken, and when the answer is late; then it may still come.
    bool roundTrip();
    // The halves of roundTrip(), for who has something to do meanwhile.
    void ask();
    [[nodiscard]] bool isAsked() const { return answer_ != nullptr; }
    bool awaitAnswer();

private:
    using Clock = std::chrono::steady_clock;

    struct Disconnect {
        void operator()(wl_display *display) const;
    };
    struct EndQueue {
        void operator()(wl_event_queue *queue) const;
    };
    struct EndWrapper {
        void operator()(wl_display *wrapper) const;
    };

    void open(wl_display &display);
    /// False when nothing came until then, or it is broken.
    bool readEvents(Clock::time_point end);
    void tellListeners();
    [[nodiscard]] bool waitFor(short what, Clock::time_point end) const;
    void checkForError();

    const std::chrono::milliseconds patience_;
    /// Of all events so far.
    std::size_t toldCount_ = 0;
    QString error_;
    /// Null where it is somebody else's.
    std::unique_ptr<wl_display, Disconnect> own_;
    wl_display *display_ = nullptr;
    std::unique_ptr<wl_event_queue, EndQueue> events_;
    /// The display, but what is asked of it has its events in that queue.
    std::unique_ptr<wl_display, EndWrapper> requests_;
    /// Of the last question, as long as it is awaited.
    std::unique_ptr<wl_callback, ReleaseProxy> answer_;
};

}  // namespace kestrelbay::wayland
