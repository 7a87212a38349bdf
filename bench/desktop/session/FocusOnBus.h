#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

#include <QString>

#include "platform/linux/glib/GObjectPtr.h"
#include "session/BenchSession.h"

namespace kestrelbay::bench {

/// Hears from a script within a compositor which windows get the focus: by calls, or signals to
/// this connection alone, of this interface that name a window.
class FocusOnBus {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr const char *kInterface = "org.kestrelbay.Bench.Focus";

    /// Throws std::runtime_error when there is no such bus.
    explicit FocusOnBus(const QString &busAddress);
    ~FocusOnBus();
    FocusOnBus(const FocusOnBus &) = delete;
    FocusOnBus &operator=(const FocusOnBus &) = delete;

    /// Of the connection, on the bus.
    [[nodiscard]] QString name() const;

    /// The next one, if it comes within the time. The target as the script calls it.
    [[nodiscard]] std::optional<BenchSession::Focus> next(const QString &target,
                                                          std::chrono::milliseconds timeout);

private:
    struct Told {
        QString window;
        /// When word of it has come.
        Clock::time_point when;
    };

    /// On GIO's thread.
    void take(GDBusMessage *message);

    std::mutex mutex_;
    std::condition_variable isTold_;
    std::deque<Told> told_;
    GObjectPtr<GDBusConnection> connection_;
};

}  // namespace kestrelbay::bench
