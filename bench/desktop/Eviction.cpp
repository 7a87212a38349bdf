#include "Eviction.h"

#include <bit>
#include <cerrno>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace kestrelbay::bench {

namespace {

std::string procFile(pid_t process, const char *name) {
    return "/proc/" + std::to_string(process) + '/' + name;
}

/// Of the kernel, which has no pages to give back: [vvar], [vdso] and [vsyscall].
bool isKernels(const std::string &name) {
    return name.starts_with("[v");
}

}  // namespace

Resident resident(pid_t process) {
    Resident found;
    std::ifstream status(procFile(process, "status"));
    for (std::string key; status >> key; status.ignore(256, '\n')) {
        if (key == "RssAnon:")
            status >> found.anonymous;
        else if (key == "RssFile:")
            status >> found.files;
    }
    return found;
}

void pageOut(pid_t process) {
    const auto descriptor = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
    std::ifstream maps(procFile(process, "maps"));
    bool isDone = false;
    for (std::string line; std::getline(maps, line);) {
        std::istringstream words(line);
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        char dash = 0;
        std::string access;
        std::string offset;
        std::string device;
        std::string inode;
        std::string name;
        words >> std::hex >> begin >> dash >> end >> access >> offset >> device >> inode >> name;
        if (isKernels(name))
            continue;
        const iovec range{std::bit_cast<void *>(begin), end - begin};
        isDone |= ::syscall(SYS_process_madvise, descriptor, &range, 1, MADV_PAGEOUT, 0) > 0;
    }
    ::close(descriptor);
    if (!isDone)
        throw std::runtime_error("no memory of another process may be paged out");
}

}  // namespace kestrelbay::bench
