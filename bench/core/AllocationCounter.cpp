#include "AllocationCounter.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::uint64_t> count = 0;

}  // namespace

std::uint64_t kestrelbay::allocationCount() {
    return count.load();
}

#if defined(__GLIBC__)

// Underneath operator new, so that Qt's own containers are counted as well. The
// names are those of the C library.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t number, std::size_t size);
void *__libc_realloc(void *memory, std::size_t size);

void *malloc(std::size_t size) noexcept {
    ++count;
    return __libc_malloc(size);
}
void *calloc(std::size_t number, std::size_t size) noexcept {
    ++count;
    return __libc_calloc(number, size);
}
void *realloc(void *memory, std::size_t size) noexcept {
    ++count;
    return __libc_realloc(memory, size);
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-inconsistent-declaration-parameter-name)

#else

void *operator new(std::size_t size) {
    ++count;
    if (void *const memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void *memory) noexcept {
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept {
    std::free(memory);
}

#endif
