#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include <QStringList>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/glib/BackgroundLoop.h"

namespace kestrelbay {

/// Keeps an ApplicationIndex true to the folders on disk. It is built on the
/// background loop, at once, when named files change, and when a folder or the
/// default applications change.
class ApplicationIndexKeeper {
public:
    /// The callback runs on the background loop after every build.
    explicit ApplicationIndexKeeper(std::function<void()> rebuilt = {});
    ~ApplicationIndexKeeper();

    /// The newest index. Waits for the first one, and for the one that a call of
    /// setNamedPaths() before this call brings; never for a change on disk. Any
    /// thread but the background loop's.
    [[nodiscard]] std::shared_ptr<const ApplicationIndex> current() const;
    /// What there is by now, without waiting; empty before the first build.
    [[nodiscard]] std::shared_ptr<const ApplicationIndex> currentOrEmpty() const;

    /// Entries to be known wherever they are. Any thread.
    void setNamedPaths(const QStringList &paths);

    [[nodiscard]] BackgroundLoop &loop() { return loop_; }

private:
    struct Watch;

    void request();
    void build();
    void watch(const QStringList &folders);
    void scheduleBuild();

    std::function<void()> rebuilt_;
    const QStringList folders_;

    mutable std::mutex mutex_;
    mutable std::condition_variable built_;
    QStringList namedPaths_;
    std::uint64_t requested_ = 0;
    std::uint64_t done_ = 0;
    std::shared_ptr<const ApplicationIndex> index_;

    // Touched on the background loop only.
    bool buildScheduled_ = false;
    std::vector<std::unique_ptr<Watch>> watches_;
    std::unique_ptr<Watch> defaultsWatch_;

    // Last, so that its thread has ended before anything that the thread uses.
    BackgroundLoop loop_;
};

}  // namespace kestrelbay
