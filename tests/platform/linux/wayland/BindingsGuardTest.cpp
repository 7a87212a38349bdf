#include "platform/linux/wayland/BindingsGuard.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "platform/linux/wayland/HotkeysClaim.h"
#include "platform/linux/wayland/sway/SwayBinding.h"
#include "support/Poll.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::wayland {
namespace {

using kestrelbay::testing::waitUntil;

/// A program called swaymsg that writes down what it was called with, first in PATH.
class BindingsGuardTest : public ::testing::Test {
protected:
    BindingsGuardTest() {
        const QString program = folder_.filePath(u"swaymsg"_s);
        QFile file(program);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nwhile [ -e " + QFile::encodeName(folder_.filePath(u"busy"_s)) +
                   " ]; do sleep 0.01; done\nprintf '%s|' \"$@\" >" +
                   QFile::encodeName(folder_.filePath(u"called"_s)) + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(folder_.path()) + ':' + path_);
    }
    ~BindingsGuardTest() override { qputenv("PATH", path_); }

    [[nodiscard]] QByteArray calledWith() const {
        QFile file(folder_.filePath(u"called"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const QTemporaryDir folder_;
    const QByteArray path_ = qgetenv("PATH");
    const QString claim_ = folder_.filePath(u"claim"_s);
    const QString socket_ = folder_.filePath(u"ipc.sock"_s);
};

TEST_F(BindingsGuardTest, RunsTheLastCommandsOfAProgramThatIsKilled) {
    const pid_t program = ::fork();
    if (program == 0) {
        const BindingsGuard guard(sway::kUnbindAtEnd, socket_.toUtf8(), -1);
        guard.setKeys("unbindcode 1; unbindcode 2");
        guard.setKeys("unbindcode 3; unbindcode 4");
        ::raise(SIGKILL);
    }
    ::waitpid(program, nullptr, 0);
    EXPECT_TRUE(waitUntil([this] { return !calledWith().isEmpty(); }));
    EXPECT_EQ(calledWith(),
              "-q|-s|" + socket_.toUtf8() + "|--|mode default; unbindcode 3; unbindcode 4|");
}

TEST_F(BindingsGuardTest, DoesNothingWhereItWasNotNecessary) {
    {
        const BindingsGuard guard(sway::kUnbindAtEnd, socket_.toUtf8(), -1);
        guard.setKeys("unbindcode 1");
    }
    // The shell has ended by now.
    EXPECT_EQ(calledWith(), "");
    { const BindingsGuard guard(sway::kUnbindAtEnd, socket_.toUtf8(), -1); }
    EXPECT_EQ(calledWith(), "");
}

TEST_F(BindingsGuardTest, HoldsTheClaimUntilItIsDone) {
    QFile busy(folder_.filePath(u"busy"_s));
    ASSERT_TRUE(busy.open(QIODevice::WriteOnly));
    const pid_t program = ::fork();
    if (program == 0) {
        const std::optional<HotkeysClaim> claim = HotkeysClaim::take(claim_);
        const BindingsGuard guard(sway::kUnbindAtEnd, socket_.toUtf8(), claim->descriptor());
        guard.setKeys("unbindcode 1");
        ::raise(SIGKILL);
    }
    ::waitpid(program, nullptr, 0);
    EXPECT_FALSE(HotkeysClaim::take(claim_));
    ASSERT_TRUE(busy.remove());
    EXPECT_TRUE(waitUntil([this] { return HotkeysClaim::take(claim_).has_value(); }));
    EXPECT_NE(calledWith(), "");
}

}  // namespace
}  // namespace kestrelbay::wayland
