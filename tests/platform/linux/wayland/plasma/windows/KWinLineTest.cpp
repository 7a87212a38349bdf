#include "platform/linux/wayland/plasma/windows/KWinLine.h"

#include <atomic>
#include <optional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/wayland/plasma/windows/FakeKWin.h"
#include "support/Poll.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::plasma {
namespace {

using kestrelbay::testing::FakeKWin;
using kestrelbay::testing::waitUntil;
using ::testing::Optional;

class KWinLineTest : public ::testing::Test {
protected:
    KWinLineTest() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().toUtf8());
        startKWin();
    }
    ~KWinLineTest() override { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    void startKWin() {
        kwin_.emplace(bus_.address(), [this](const QByteArray &question) {
            if (isSilent_)
                (void)waitUntil([this] { return !isSilent_; });
            return "done: " + question;
        });
    }
    void listen(KWinLine &line) {
        line.listen({.windowAppeared = [this] { ++appeared_; },
                     .windowUsed = [this](const QString &name) { wasAUsed_ = name == u"{a}"; }});
    }

    testing::PrivateSessionBus bus_;
    std::atomic<bool> isSilent_ = false;
    std::atomic<int> appeared_ = 0;
    std::atomic<bool> wasAUsed_ = false;
    std::optional<FakeKWin> kwin_;
};

TEST_F(KWinLineTest, BringsQuestionsToTheScriptAndTheirAnswersBack) {
    KWinLine line;
    EXPECT_TRUE(line.isKWinThere());
    listen(line);
    EXPECT_THAT(line.ask("one"), Optional(QByteArray("done: one")));
    const KWinLine::Number two = line.send("two");
    const KWinLine::Number three = line.send("three");
    EXPECT_THAT(line.await(three), Optional(QByteArray("done: three")));
    EXPECT_THAT(line.await(two), Optional(QByteArray("done: two")));
}

TEST_F(KWinLineTest, HasTheScriptRunAnewOnceKWinMayHaveForgottenIt) {
    KWinLine line(std::chrono::milliseconds(0));
    listen(line);
    ASSERT_TRUE(line.ask("one"));
    for (int i = 0; i < 3; ++i) {
        kwin_->forgetCall();
        const int loads = kwin_->loadCount();
        EXPECT_THAT(line.ask("two"), Optional(QByteArray("done: two")));
        EXPECT_EQ(kwin_->loadCount(), loads + 1);
    }
}

TEST_F(KWinLineTest, LeavesTheScriptAloneAsLongAsItWaits) {
    KWinLine line;
    listen(line);
    for (const char *const question : {"one", "two", "three"})
        EXPECT_TRUE(line.ask(question));
    EXPECT_EQ(kwin_->loadCount(), 1);
}

TEST_F(KWinLineTest, DoesNotTakeALateAnswerForAnother) {
    KWinLine line;
    listen(line);
    isSilent_ = true;
    EXPECT_EQ(line.ask("one"), std::nullopt);
    EXPECT_EQ(line.ask("two"), std::nullopt);
    isSilent_ = false;
    EXPECT_THAT(line.ask("three"), Optional(QByteArray("done: three")));
}

TEST_F(KWinLineTest, TellsOfNewWindowsAndOfThoseThatAreUsed) {
    KWinLine line;
    listen(line);
    ASSERT_TRUE(line.ask("one"));
    kwin_->tellOfWindow();
    EXPECT_TRUE(waitUntil([this] { return appeared_ == 1; }));
    kwin_->tellOfUse(QStringLiteral("{a}"));
    EXPECT_TRUE(waitUntil([this] { return wasAUsed_.load(); }));
}

TEST_F(KWinLineTest, GoesOnWithAnotherKWin) {
    KWinLine line;
    listen(line);
    ASSERT_TRUE(line.ask("one"));
    kwin_.reset();
    EXPECT_FALSE(line.isKWinThere());
    startKWin();
    EXPECT_TRUE(waitUntil([this] { return kwin_->isScriptLoaded(); }));
    EXPECT_THAT(line.ask("two"), Optional(QByteArray("done: two")));
}

TEST_F(KWinLineTest, TakesTheScriptAwayAtTheEnd) {
    {
        KWinLine line;
        listen(line);
        ASSERT_TRUE(line.ask("one"));
        EXPECT_TRUE(kwin_->isScriptLoaded());
    }
    EXPECT_FALSE(kwin_->isScriptLoaded());
}

TEST_F(KWinLineTest, IsSilentWithoutABus) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    KWinLine line;
    EXPECT_FALSE(line.isKWinThere());
    listen(line);
    EXPECT_EQ(line.ask("one"), std::nullopt);
}

}  // namespace
}  // namespace kestrelbay::plasma
