#include "platform/linux/MemoryRelease.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <span>

#include <QByteArray>
#include <QFile>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace kestrelbay {
namespace {

/// So many pages of a file in memory.
class MappedFile {
public:
    MappedFile(std::size_t pages, char content)
        : size_(pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE))) {
        EXPECT_TRUE(file_.open());
        EXPECT_EQ(file_.write(QByteArray(static_cast<qsizetype>(size_), content)),
                  static_cast<qint64>(size_));
        EXPECT_TRUE(file_.flush());
        memory_ = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file_.handle(), 0);
        EXPECT_NE(memory_, MAP_FAILED);
    }
    ~MappedFile() { ::munmap(memory_, size_); }
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    [[nodiscard]] bool holdsOnly(char content) const {
        const std::span bytes(static_cast<const char *>(memory_), size_);
        return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(size_))
                   .count(content) == static_cast<qsizetype>(size_);
    }
    void alter(char content) {
        ASSERT_EQ(::mprotect(memory_, size_, PROT_READ | PROT_WRITE), 0);
        *static_cast<char *>(memory_) = content;
        ASSERT_EQ(::mprotect(memory_, size_, PROT_READ), 0);
    }
    [[nodiscard]] char first() const { return *static_cast<const char *>(memory_); }
    /// As the kernel has it.
    [[nodiscard]] int residentKiB() const {
        QFile mappings(QStringLiteral("/proc/self/smaps"));
        EXPECT_TRUE(mappings.open(QIODevice::ReadOnly));
        const QByteArray text = mappings.readAll();
        const qsizetype own =
            text.indexOf(QByteArray::number(reinterpret_cast<quintptr>(memory_), 16) + '-');
        EXPECT_GE(own, 0);
        const qsizetype resident = text.indexOf("Rss:", own);
        return text.mid(resident + 4, text.indexOf("kB", resident) - resident - 4)
            .trimmed()
            .toInt();
    }

private:
    QTemporaryFile file_;
    std::size_t size_;
    void *memory_ = nullptr;
};

TEST(MemoryRelease, PagesOfFilesGoAndComeBack) {
    const MappedFile file(16, 'a');
    EXPECT_TRUE(file.holdsOnly('a'));
    EXPECT_GT(file.residentKiB(), 0);
    releaseMemory();
    EXPECT_EQ(file.residentKiB(), 0);
    EXPECT_TRUE(file.holdsOnly('a'));
}

TEST(MemoryRelease, WhatWasAlteredStays) {
    MappedFile file(16, 'a');
    file.alter('b');
    releaseMemory();
    EXPECT_EQ(file.first(), 'b');
    EXPECT_GT(file.residentKiB(), 0);
}

}  // namespace
}  // namespace kestrelbay
