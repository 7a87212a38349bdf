#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>

namespace kestrelbay {

/// What the kernel tells of a process in a file of this name below /proc. Empty when there
/// is no such process, or when it is another user's. Any thread, as all of these.
[[nodiscard]] QByteArray readOfProcess(std::int64_t pid, const char *name);

/// When the process was started, in clock ticks since boot: with its number, this
/// names a process for good. 0 when there is no such process, or when it has ended.
[[nodiscard]] std::uint64_t processStartTime(std::int64_t pid);

/// Below 1 when there is none.
[[nodiscard]] std::int64_t parentOfProcess(std::int64_t pid);

/// Has this process what stands in a variable of the environment it was started with?
[[nodiscard]] bool wasStartedWith(std::int64_t pid, const QByteArray &variable);

/// The process that began the session of this one, which may have ended since. No other gets
/// its number as long as the session has members. Below 1 when there is no such process.
[[nodiscard]] std::int64_t sessionOfProcess(std::int64_t pid);

/// All processes, whoever's they are.
[[nodiscard]] std::vector<std::int64_t> allProcesses();

}  // namespace kestrelbay
