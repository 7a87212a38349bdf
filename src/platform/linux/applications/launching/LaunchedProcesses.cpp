#include "platform/linux/applications/launching/LaunchedProcesses.h"

#include "platform/linux/applications/matching/ProcessFacts.h"

namespace kestrelbay {

void LaunchedProcesses::add(std::int64_t pid, const QString &entryPath) {
    const std::uint64_t startTime = processStartTime(pid);
    const std::lock_guard lock(mutex_);
    std::erase_if(processes_, [](const auto &item) {
        return processStartTime(item.first) != item.second.startTime;
    });
    if (startTime != 0)
        processes_.insert_or_assign(pid, Process{startTime, entryPath});
}

QString LaunchedProcesses::entryOf(std::int64_t pid) const {
    const std::lock_guard lock(mutex_);
    const auto process = processes_.find(pid);
    return process != processes_.end() && processStartTime(pid) == process->second.startTime
               ? process->second.entryPath
               : QString();
}

}  // namespace kestrelbay
