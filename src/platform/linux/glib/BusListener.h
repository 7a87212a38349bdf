#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include <QByteArray>
#include <QString>

#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/glib/GObjectPtr.h"
#include "platform/linux/glib/MainThreadInbox.h"
#include "platform/linux/glib/SessionBus.h"

namespace kestrelbay {

/// Talks to services on the session bus on a thread of its own, so that the main
/// thread never waits for another program. To be made and destroyed on the main
/// thread, and to outlive its watches.
class BusListener {
public:
    /// Connects at once, in the background.
    BusListener();
    ~BusListener();
    BusListener(const BusListener &) = delete;
    BusListener &operator=(const BusListener &) = delete;

    /// Is there a bus? False until it is known.
    [[nodiscard]] bool isConnected() const { return isConnected_; }

    [[nodiscard]] BackgroundLoop &loop() { return loop_; }

private:
    friend class BusWatch;

    SessionBus bus_;
    GObjectPtr<GCancellable> stop_;
    std::atomic<bool> isConnected_{false};
    /// Counted on the thread of the loop only.
    int callsUnderWay_ = 0;
    // Last, so that its thread has ended before anything that the thread uses.
    BackgroundLoop loop_;
};

/// One service on the bus: whether it is there, what it tells, and what it answers.
/// Main thread; the handlers are called through the inbox.
class BusWatch {
public:
    struct Service {
        const char *name;
        const char *path;
        const char *interface;
    };
    struct Handlers {
        /// The name has an owner, or another one.
        std::function<void()> appeared;
        /// It has none. Called first thing too when there is none, or no bus.
        std::function<void()> vanished;
        /// A signal of the interface.
        std::function<void(const QString &member, GVariant *parameters)> signal;
    };
    /// No reply: an error, or none within 5 s.
    using Answer = std::function<void(GVariant *reply)>;

    BusWatch(BusListener &listener, std::shared_ptr<MainThreadInbox> inbox, const Service &service,
             Handlers handlers);
    /// The inbox is to be closed before.
    ~BusWatch();
    BusWatch(const BusWatch &) = delete;
    BusWatch &operator=(const BusWatch &) = delete;

    /// Calls a method of the service's object if the service runs. Takes the parameters.
    void call(const char *interface, const char *method, GVariant *parameters, Answer answer);
    /// Has the bus start the service, where it knows how to.
    void startService();

private:
    struct Remote;

    BusListener &listener_;
    /// Belongs to the thread of the loop.
    std::unique_ptr<Remote> remote_;
};

}  // namespace kestrelbay
