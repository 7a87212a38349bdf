#include "platform/linux/MemoryRelease.h"

#include <malloc.h>
#include <sys/mman.h>

#include <bit>
#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QFile>

namespace kestrelbay {

namespace {

/// A mapping of a file that cannot be written to, as /proc/PID/smaps begins one:
/// "55d0c3a00000-55d0c3a21000 r-xp 00000000 08:01 1234 /usr/bin/program".
struct ReadOnlyFile {
    std::uintptr_t begin;
    std::uintptr_t end;
};

std::optional<ReadOnlyFile> readOnlyFile(const QByteArray &line) {
    const QByteArrayList words = line.simplified().split(' ');
    constexpr qsizetype kPlace = 0;
    constexpr qsizetype kRights = 1;
    constexpr qsizetype kPath = 5;
    if (words.size() <= kPath || !words[kPath].startsWith('/') || words[kRights].size() != 4 ||
        words[kRights][1] == 'w' || words[kRights][3] != 'p')
        return std::nullopt;
    const QByteArrayList ends = words[kPlace].split('-');
    if (ends.size() != 2)
        return std::nullopt;
    return ReadOnlyFile{.begin = ends[0].toULongLong(nullptr, 16),
                        .end = ends[1].toULongLong(nullptr, 16)};
}

bool isHeader(const QByteArray &line) {
    return line.indexOf('-') > 0 && line.indexOf('-') < line.indexOf(' ');
}

/// Only what was never altered can be read from its file again.
void dropUnalteredFilePages() {
    QFile mappings(QStringLiteral("/proc/self/smaps"));
    if (!mappings.open(QIODevice::ReadOnly))
        return;
    const QByteArray text = mappings.readAll();
    std::optional<ReadOnlyFile> current;
    for (const QByteArray &line : text.split('\n')) {
        if (isHeader(line)) {
            current = readOnlyFile(line);
        } else if (current && line.startsWith("Anonymous:")) {
            if (line.simplified() == "Anonymous: 0 kB")
                ::madvise(std::bit_cast<void *>(current->begin), current->end - current->begin,
                          MADV_DONTNEED);
            current.reset();
        }
    }
}

}  // namespace

void releaseMemory() {
    dropUnalteredFilePages();
    // Last, as reading the list has taken some.
    ::malloc_trim(0);
}

}  // namespace kestrelbay
