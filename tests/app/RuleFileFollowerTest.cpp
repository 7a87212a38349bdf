#include "app/RuleFileFollower.h"

#include <chrono>
#include <optional>

#include <QTest>

#include "fakes/FakeTimers.h"
#include "hotkeys/ManagerFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

using std::chrono_literals::operator""ms;

class RuleFileFollowerTest : public ManagerFixture {
protected:
    RuleFileFollowerTest() {
        manager().addRule(rule(u"A"_s));
        follower_.emplace(manager(), timers_, [this] {
            ++asked_;
            return isBusy_;
        });
        asked_ = 0;
    }
    [[nodiscard]] bool takesIn(const QStringList &wanted) {
        return QTest::qWaitFor([&] { return names() == wanted; });
    }
    /// The change of the file has come here, whatever was made of it.
    [[nodiscard]] bool hears() {
        return QTest::qWaitFor([this] { return std::exchange(asked_, 0) > 0; });
    }

    FakeTimers timers_;
    bool isBusy_ = false;
    int asked_ = 0;
    std::optional<RuleFileFollower> follower_;
};

TEST_F(RuleFileFollowerTest, TakesAnEditInAtOnce) {
    writeFile(R"([{"appName": "B"}, {"appName": "A"}])");
    EXPECT_TRUE(takesIn({u"B"_s, u"A"_s}));
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(RuleFileFollowerTest, TakesInWhatChangedBeforeItWasThere) {
    follower_.reset();
    writeFile(R"([{"appName": "B"}])");
    follower_.emplace(manager(), timers_, [] { return false; });
    EXPECT_EQ(names(), QStringList{u"B"_s});
}

TEST_F(RuleFileFollowerTest, WaitsUntilTheUserIsDone) {
    isBusy_ = true;
    writeFile(R"([{"appName": "B"}])");
    EXPECT_TRUE(hears());
    follower_->lookAgain();
    EXPECT_EQ(names(), QStringList{u"A"_s});
    isBusy_ = false;
    follower_->lookAgain();
    EXPECT_EQ(names(), QStringList{u"B"_s});
}

TEST_F(RuleFileFollowerTest, SaysOnceThatAnEditCannotBeRead) {
    writeFile("[{");
    follower_->lookAgain();
    timers_.advance(999ms);
    EXPECT_EQ(log_.lines(), QStringList());
    timers_.advance(1ms);
    EXPECT_EQ(log_.lines().size(), 1);
    follower_->lookAgain();
    timers_.advance(10'000ms);
    EXPECT_EQ(log_.lines().size(), 1);
    EXPECT_EQ(names(), QStringList{u"A"_s});
}

TEST_F(RuleFileFollowerTest, SaysNothingOfAFileThatIsStillBeingWritten) {
    for (const char *text : {"", R"([{"appName")", R"([{"appName": "B"})"}) {
        writeFile(text);
        follower_->lookAgain();
        timers_.advance(900ms);
    }
    removeFile();
    follower_->lookAgain();
    timers_.advance(900ms);
    writeFile(R"([{"appName": "B"}])");
    EXPECT_TRUE(takesIn({u"B"_s}));
    timers_.advance(10'000ms);
    EXPECT_EQ(log_.lines(), QStringList());
}

TEST_F(RuleFileFollowerTest, SetsNoTimerForWhatTheProgramWroteItself) {
    manager().addRule(rule(u"B"_s));
    ASSERT_TRUE(hears());
    EXPECT_EQ(timers_.waitingCount(), 0U);
    EXPECT_EQ(rulesTakenInCalls_, 0);
}

}  // namespace
}  // namespace kestrelbay
