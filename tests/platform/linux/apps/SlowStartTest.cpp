#include <csignal>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"
#include "platform/linux/applications/matching/Processes.h"
#include "platform/linux/apps/bus.h"
#include "platform/linux/apps/desktop.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

/// A program that opens its window only when it is let, and presses meanwhile.
class SlowStart : public AppsDesktop {
protected:
    void SetUp() override {
        AppsDesktop::SetUp();
        gate_ = PrivateHome::instance().path(QStringLiteral("gate")).toUtf8();
        ASSERT_EQ(::mkfifo(gate_.constData(), 0600), 0);
        startWindowManager();
        startWorkspace();
    }
    void TearDown() override {
        for (const std::int64_t pid : started())
            ::kill(static_cast<pid_t>(pid), SIGKILL);
        ::unlink(gate_.constData());
        AppsDesktop::TearDown();
    }

    [[nodiscard]] QByteArray program() const {
        return clientProgram() + " --windows=1 --class=SlowOne --gate=" + gate_;
    }
    static QString entry(const QByteArray &lines) {
        return PrivateHome::instance().writeEntry(QStringLiteral("slow.desktop"), lines);
    }

    /// The processes of this program that have to do with the gate.
    [[nodiscard]] std::vector<std::int64_t> processesOf(const QByteArray &name) const {
        std::vector<std::int64_t> pids;
        for (const std::int64_t pid : allProcesses()) {
            const QByteArray words = readOfProcess(pid, "cmdline");
            if (words.startsWith(name + '\0') && words.contains(gate_) &&
                processStartTime(pid) != 0)
                pids.push_back(pid);
        }
        return pids;
    }
    [[nodiscard]] std::vector<std::int64_t> started() const { return processesOf(clientProgram()); }
    bool becomeStarted(std::size_t count) const {
        return waitUntil([&] { return started().size() == count; });
    }
    void openGate() const {
        // Fails as long as nobody waits there.
        ASSERT_TRUE(waitUntil([&] {
            const int gate = ::open(gate_.constData(), O_WRONLY | O_NONBLOCK);
            return gate >= 0 && ::close(gate) == 0;
        }));
    }

    void press(const QString &entryPath, ArgumentKind kind = ArgumentKind::None,
               const QString &argument = {}) {
        AppLauncher(workspace(), log_)
            .handle({.appPath = entryPath, .launchArguments = argument, .argumentKind = kind});
    }

    QByteArray gate_;
};

TEST_F(SlowStart, IsNotRepeatedUntilTheWindowIsThere) {
    const QString path = entry("Exec=" + program());
    for (int i = 0; i < 3; ++i)
        press(path);
    ASSERT_TRUE(becomeStarted(1));
    press(path);
    EXPECT_EQ(started().size(), 1U);
    openGate();
    ASSERT_TRUE(becomesActive(path));
    press(path);
    EXPECT_EQ(started().size(), 1U);

    // The window was there, so the next press starts another one.
    ::kill(static_cast<pid_t>(started().front()), SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return !running(path); }));
    press(path);
    EXPECT_TRUE(becomeStarted(1));
}

TEST_F(SlowStart, IsRepeatedWhenItHasDied) {
    const QString path = entry("Exec=" + program());
    press(path);
    ASSERT_TRUE(becomeStarted(1));
    const std::int64_t first = started().front();
    ::kill(static_cast<pid_t>(first), SIGKILL);
    ASSERT_TRUE(becomeStarted(0));
    press(path);
    ASSERT_TRUE(becomeStarted(1));
    EXPECT_NE(started().front(), first);
}

TEST_F(SlowStart, GoesOnInTheChildOfALauncherThatEnds) {
    for (const char *launcher : {"", "setsid "}) {
        const QString path =
            entry("Exec=sh -c \"" + QByteArray(launcher) + program() + " & exit 0\"");
        press(path);
        ASSERT_TRUE(becomeStarted(1)) << launcher;
        ASSERT_TRUE(waitUntil([&] { return processesOf("sh").empty(); })) << launcher;
        press(path);
        press(path);
        EXPECT_EQ(started().size(), 1U) << launcher;
        ::kill(static_cast<pid_t>(started().front()), SIGKILL);
        ASSERT_TRUE(becomeStarted(0));
        press(path);
        ASSERT_TRUE(becomeStarted(1)) << launcher;
        ::kill(static_cast<pid_t>(started().front()), SIGKILL);
        ASSERT_TRUE(becomeStarted(0));
    }
}

TEST_F(SlowStart, WithArgumentsIsRepeatedAtEveryPress) {
    const QString path = entry("Exec=" + program());
    for (int i = 0; i < 3; ++i)
        press(path, ArgumentKind::LaunchArgs, QStringLiteral("--x"));
    EXPECT_TRUE(becomeStarted(3));
    press(path);
    EXPECT_EQ(started().size(), 3U);
}

TEST_F(SlowStart, WithAFileIsNotRepeatedButForAnotherFile) {
    const QString path = entry("Exec=" + program() + " %U");
    for (const char *file : {"/etc/hosts", "/etc/hosts", "/etc/passwd", "/etc/hosts"})
        press(path, ArgumentKind::FilePath, QLatin1String(file));
    EXPECT_TRUE(becomeStarted(2));
}

TEST_F(SlowStart, ByDBusIsNotRepeated) {
    const QString path = PrivateHome::instance().writeEntry(
        QStringLiteral("org.example.Slow.desktop"), "DBusActivatable=true\nExec=" + program());
    const BusService service(QStringLiteral("org.example.Slow"),
                             QStringLiteral("/org/example/Slow"), kApplicationXml,
                             BusService::Manner::Answers);
    for (int i = 0; i < 3; ++i)
        press(path);
    EXPECT_EQ(service.calls().size(), 1);
}

TEST_F(SlowStart, OfASplashScreenIsNotRepeatedEither) {
    const QString path = entry("Exec=" + program() + "\nStartupWMClass=SlowOne");
    press(path);
    ASSERT_TRUE(becomeStarted(1));
    maker_->make({.className = "SlowOne", .type = "_NET_WM_WINDOW_TYPE_SPLASH"});
    ASSERT_TRUE(waitUntil([&] { return running(path) != nullptr; }));
    press(path);
    EXPECT_EQ(started().size(), 1U);
}

}  // namespace
}  // namespace kestrelbay::testing
