#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <mutex>
#include <utility>

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What we launched: which processes, with which entry files, and what of it is still on its
/// way to a first window. Any thread.
class Launches {
public:
    using Clock = std::chrono::steady_clock;

    /// Window managers take a program for failed that shows no window for 15 to 30 s.
    static constexpr std::chrono::seconds kLongestStart{20};
    /// For an application that was asked by D-Bus, of whose process nothing is known.
    static constexpr std::chrono::seconds kLongestAnswer{5};

    explicit Launches(std::function<Clock::time_point()> now = &Clock::now)
        : now_(std::move(now)) {}

    struct Launch {
        /// Told to what is launched; no other launch has it.
        QString startupId;
        QString entryPath;
        QStringList uris;
    };
    enum class Repeat { UnlessUnderWay, Always };

    /// A launch begins, unless it is not to be repeated and one is under way that does as
    /// much: one of the same entry, and with the same URIs if there are any.
    [[nodiscard]] bool begin(const Launch &launch, Repeat repeat);
    /// It has a process (one of several, if called again), which leads a session of its own.
    void started(const QString &startupId, std::int64_t pid);
    void failed(const QString &startupId);

    /// Is there a launch of which no window is known?
    [[nodiscard]] bool isWindowAwaited() const;
    /// A window of this process and these entries is there: their launches are over.
    void windowAppeared(std::int64_t pid, const QStringList &entryPaths);

    /// The entry file that this process was launched with. Empty for one that we did not
    /// start, also when it has the number of one that we started.
    [[nodiscard]] QString entryOf(std::int64_t pid) const;

    /// The entry file of the launched process in whose session this one, another, is. Empty when
    /// that process has shown a window of its own: what such a program starts is another program.
    [[nodiscard]] QString entryOfSession(std::int64_t pid) const;

private:
    struct Begun : Launch {
        Clock::time_point when;
        std::int64_t pid = 0;
        std::uint64_t startTime = 0;
        bool hasWindow = false;
        bool hasOwnWindow = false;
    };

    [[nodiscard]] static bool isAlive(const Begun &launch);
    [[nodiscard]] bool isUnderWay(const Begun &launch) const;

    const std::function<Clock::time_point()> now_;
    mutable std::mutex mutex_;
    std::list<Begun> launches_;
};

}  // namespace kestrelbay
