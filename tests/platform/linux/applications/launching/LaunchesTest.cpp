#include <gtest/gtest.h>

#include <array>

#include <csignal>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/applications/launching/Launches.h"

namespace kestrelbay {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kNoProcess = 0x7fff'ffff;

/// A session of two processes. That of the tests may have its leader outside of a container,
/// where nobody here can see it.
class Session {
public:
    Session() {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0)
            return;
        leader_ = ::fork();
        if (leader_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::setsid();
            const pid_t member = ::fork();
            if (member == 0)
                ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            else
                static_cast<void>(::write(ends[1], &member, sizeof member));
            while (true)
                ::pause();
        }
        static_cast<void>(::read(ends[0], &member_, sizeof member_));
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ~Session() {
        if (leader_ <= 0)
            return;
        // Both: the member may not have come to the point where it dies with the leader.
        ::kill(-leader_, SIGKILL);
        ::waitpid(leader_, nullptr, 0);
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    [[nodiscard]] pid_t leader() const { return leader_; }
    [[nodiscard]] pid_t member() const { return member_; }

private:
    pid_t leader_ = -1;
    pid_t member_ = -1;
};

class LaunchesTest : public ::testing::Test {
protected:
    bool begin(const QString &entry, const QStringList &uris = {},
               Launches::Repeat repeat = Launches::Repeat::UnlessUnderWay) {
        id_ = QString::number(++count_);
        return launches_.begin({id_, entry, uris}, repeat);
    }
    void started(std::int64_t pid) { launches_.started(id_, pid); }

    const QString one_ = QStringLiteral("/apps/one.desktop");
    const QString two_ = QStringLiteral("/apps/two.desktop");
    Launches::Clock::time_point now_ = Launches::Clock::now();
    Launches launches_{[this] { return now_; }};
    QString id_;
    int count_ = 0;
};

TEST_F(LaunchesTest, AreNotRepeatedWhileUnderWay) {
    EXPECT_FALSE(launches_.isWindowAwaited());
    EXPECT_TRUE(begin(one_));
    EXPECT_FALSE(begin(one_));
    EXPECT_TRUE(begin(two_));
    EXPECT_TRUE(begin(one_, {}, Launches::Repeat::Always));
    EXPECT_TRUE(launches_.isWindowAwaited());
}

TEST_F(LaunchesTest, WithAnotherFileAreOthers) {
    const QStringList file{QStringLiteral("file:///a")};
    EXPECT_TRUE(begin(one_, file));
    EXPECT_FALSE(begin(one_, file));
    EXPECT_FALSE(begin(one_));
    EXPECT_TRUE(begin(one_, {QStringLiteral("file:///b")}));
    EXPECT_TRUE(begin(two_));
    EXPECT_TRUE(begin(two_, file));
}

TEST_F(LaunchesTest, AreOverWhenTheyFail) {
    EXPECT_TRUE(begin(one_));
    launches_.failed(id_);
    EXPECT_TRUE(begin(one_));
}

TEST_F(LaunchesTest, AreOverWhenAWindowIsThere) {
    EXPECT_TRUE(begin(one_));
    launches_.windowAppeared(0, {two_});
    EXPECT_FALSE(begin(one_));
    launches_.windowAppeared(0, {two_, one_});
    EXPECT_FALSE(launches_.isWindowAwaited());
    EXPECT_TRUE(begin(one_));

    // One that is known by its process alone, or by its session.
    const Session session;
    started(session.leader());
    launches_.windowAppeared(kNoProcess, {});
    EXPECT_FALSE(begin(one_));
    launches_.windowAppeared(session.member(), {});
    EXPECT_TRUE(begin(one_));
}

TEST_F(LaunchesTest, AreOverWhenTheProcessHasEnded) {
    EXPECT_TRUE(begin(one_));
    started(kNoProcess);
    EXPECT_TRUE(begin(one_));
}

TEST_F(LaunchesTest, AreNotWaitedForForever) {
    EXPECT_TRUE(begin(one_));
    started(getpid());
    EXPECT_TRUE(begin(two_));
    now_ += Launches::kLongestAnswer;
    EXPECT_FALSE(begin(one_));
    EXPECT_FALSE(begin(two_));
    now_ += 1ms;
    EXPECT_FALSE(begin(one_));
    // It has no process.
    EXPECT_TRUE(begin(two_));
    now_ += Launches::kLongestStart - Launches::kLongestAnswer;
    EXPECT_TRUE(begin(one_));
}

TEST_F(LaunchesTest, KnowTheirProcesses) {
    EXPECT_TRUE(begin(one_));
    started(getpid());
    EXPECT_TRUE(begin(two_));
    started(kNoProcess);
    EXPECT_EQ(launches_.entryOf(getpid()), one_);
    EXPECT_EQ(launches_.entryOf(kNoProcess), QString());
    EXPECT_EQ(launches_.entryOf(getppid()), QString());
    EXPECT_EQ(launches_.entryOf(0), QString());
    // Started once for each of several files.
    started(getppid());
    EXPECT_EQ(launches_.entryOf(getpid()), one_);
    EXPECT_EQ(launches_.entryOf(getppid()), two_);
}

TEST_F(LaunchesTest, KnowTheSessionsOfTheirProcesses) {
    const Session session;
    EXPECT_TRUE(begin(one_));
    started(session.leader());
    EXPECT_EQ(launches_.entryOfSession(session.member()), one_);
    EXPECT_EQ(launches_.entryOfSession(session.leader()), QString());
    EXPECT_EQ(launches_.entryOfSession(kNoProcess), QString());
    EXPECT_EQ(launches_.entryOfSession(0), QString());
    // A window of another process of the session changes nothing.
    launches_.windowAppeared(session.member(), {});
    EXPECT_EQ(launches_.entryOfSession(session.member()), one_);
}

TEST_F(LaunchesTest, OfProgramsWithWindowsAreNotThoseOfWhatTheyStart) {
    const Session session;
    EXPECT_TRUE(begin(one_));
    started(session.leader());
    launches_.windowAppeared(session.leader(), {one_});
    EXPECT_EQ(launches_.entryOfSession(session.member()), QString());
}

}  // namespace
}  // namespace kestrelbay
