#include "platform/linux/desktop/SyslogLog.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <string>

#include <gtest/gtest.h>

#include <QString>

namespace kestrelbay {

namespace {

/// Puts something else in the place of standard error for a while.
class StandardErrorReplaced {
public:
    explicit StandardErrorReplaced(int descriptor) : saved_(::dup(STDERR_FILENO)) {
        ::dup2(descriptor, STDERR_FILENO);
    }
    ~StandardErrorReplaced() {
        ::dup2(saved_, STDERR_FILENO);
        ::close(saved_);
    }
    StandardErrorReplaced(const StandardErrorReplaced &) = delete;
    StandardErrorReplaced &operator=(const StandardErrorReplaced &) = delete;

private:
    int saved_;
};

std::string readAvailable(int descriptor) {
    std::string result;
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    while (::poll(&waiting, 1, 100) == 1 && (waiting.revents & POLLIN) != 0) {
        std::array<char, 4096> buffer{};
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count <= 0) {
            break;
        }
        result.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return result;
}

class SyslogLogTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(::openpty(&screen_, &terminal_, nullptr, nullptr, nullptr), 0);
    }
    void TearDown() override {
        ::close(screen_);
        ::close(terminal_);
    }

    /// What a terminal on standard error shows of the line.
    std::string shown(const QString &line) {
        const StandardErrorReplaced replaced(terminal_);
        log_.write(line);
        return readAvailable(screen_);
    }

    int screen_ = -1;
    int terminal_ = -1;
    SyslogLog log_;
};

}  // namespace

TEST_F(SyslogLogTest, ALineIsShownOnATerminal) {
    EXPECT_EQ(shown(QStringLiteral("KestrelBay: ready, 打开 ⌘")), "KestrelBay: ready, 打开 ⌘\r\n");
}

TEST_F(SyslogLogTest, PercentSignsArePlainText) {
    EXPECT_EQ(shown(QStringLiteral("KestrelBay [WARN] %s%n%d 100%")),
              "KestrelBay [WARN] %s%n%d 100%\r\n");
}

TEST_F(SyslogLogTest, NoTextStartsALineOfItsOwnOrSpeaksToTheTerminal) {
    QString line = QStringLiteral("a\nb\rc\t\x1b[2J\u0085\u009b\u2028\u2029\x7f");
    line += QChar(u'\0');
    line += QLatin1Char('d');
    EXPECT_EQ(shown(line),
              "a\\u000ab\\u000dc\\u0009\\u001b[2J\\u0085\\u009b\\u2028\\u2029\\u007f\\u0000d\r\n");
}

TEST_F(SyslogLogTest, AStoppedTerminalIsNotWaitedFor) {
    ASSERT_EQ(::tcflow(terminal_, TCOOFF), 0);
    EXPECT_EQ(shown(QStringLiteral("KestrelBay: nobody sees this")), "");
    ASSERT_EQ(::tcflow(terminal_, TCOON), 0);
    EXPECT_EQ(shown(QStringLiteral("KestrelBay: but this")), "KestrelBay: but this\r\n");
}

TEST_F(SyslogLogTest, WhatIsNotATerminalStaysEmpty) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    {
        const StandardErrorReplaced replaced(ends[1]);
        log_.write(QStringLiteral("KestrelBay: for the log only"));
    }
    ::close(ends[1]);
    EXPECT_EQ(readAvailable(ends[0]), "");
    ::close(ends[0]);
}

}  // namespace kestrelbay
