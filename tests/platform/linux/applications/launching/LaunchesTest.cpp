#include <gtest/gtest.h>

#include <unistd.h>

#include "platform/linux/applications/launching/Launches.h"

namespace kestrelbay {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kNoProcess = 0x7fff'ffff;

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
    started(getsid(0));
    launches_.windowAppeared(kNoProcess, {});
    EXPECT_FALSE(begin(one_));
    launches_.windowAppeared(getpid(), {});
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
    EXPECT_TRUE(begin(one_));
    started(getsid(0));
    EXPECT_EQ(launches_.entryOfSession(getpid()), one_);
    EXPECT_EQ(launches_.entryOfSession(getsid(0)), QString());
    EXPECT_EQ(launches_.entryOfSession(kNoProcess), QString());
    EXPECT_EQ(launches_.entryOfSession(0), QString());
    // A window of another process of the session changes nothing.
    launches_.windowAppeared(getpid(), {});
    EXPECT_EQ(launches_.entryOfSession(getpid()), one_);
}

TEST_F(LaunchesTest, OfProgramsWithWindowsAreNotThoseOfWhatTheyStart) {
    EXPECT_TRUE(begin(one_));
    started(getsid(0));
    launches_.windowAppeared(getsid(0), {one_});
    EXPECT_EQ(launches_.entryOfSession(getpid()), QString());
}

}  // namespace
}  // namespace kestrelbay
