#pragma once

#include <cstdint>
#include <mutex>
#include <unordered_map>

#include <QString>

namespace kestrelbay {

/// The processes that we started, and with which entry file. Any thread.
class LaunchedProcesses {
public:
    void add(std::int64_t pid, const QString &entryPath);
    /// Empty for a process that we did not start, also when it has the number of
    /// one that we started.
    [[nodiscard]] QString entryOf(std::int64_t pid) const;

private:
    struct Process {
        std::uint64_t startTime;
        QString entryPath;
    };
    mutable std::mutex mutex_;
    std::unordered_map<std::int64_t, Process> processes_;
};

}  // namespace kestrelbay
