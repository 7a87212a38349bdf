#pragma once

#include <cstdint>
#include <optional>

#include <sys/types.h>

namespace kestrelbay::bench {

/// What a process has in memory, in KiB.
struct Resident {
    std::int64_t anonymous = 0;
    std::int64_t files = 0;
};

[[nodiscard]] Resident resident(pid_t process);

/// Has the kernel take from a process all the memory that it can do without, as it does with
/// programs that have slept for hours when others want memory (MADV_PAGEOUT). What is not in a
/// file stays where there is no swap. Pages that other processes use as well stay in memory, and
/// have to be found again by this one. Throws std::runtime_error when it is not permitted.
void pageOut(pid_t process);

}  // namespace kestrelbay::bench
