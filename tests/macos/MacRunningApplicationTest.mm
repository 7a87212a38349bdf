#include <thread>

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "fakes/FakeDesktop.h"
#include "fakes/FakeServices.h"
#include "fakes/LiveObjects.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/macos/applications/MacWorkspace.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay::macos {
namespace {

class MacRunningApplicationTest : public ::testing::Test {
protected:
    ~MacRunningApplicationTest() override {
        desktop_.reset();
        EXPECT_EQ(liveObjects(), objectsBefore_);
    }

    /// As the workspace lists them.
    [[nodiscard]] std::unique_ptr<RunningApplication> application(std::size_t index) {
        auto all = workspace_.runningApplications();
        static_cast<void>(takeCalls());
        return std::move(all.at(index));
    }

    const int objectsBefore_ = liveObjects();
    /// Stands for an application.
    const QTemporaryDir folder_;
    std::optional<FakeDesktop> desktop_{std::in_place};
    MacWorkspace workspace_;
};

TEST_F(MacRunningApplicationTest, AreListedInTheSystemsOrder) {
    desktop_->run(QStringLiteral("/Applications/Two.app"), QStringLiteral("test.two"));
    desktop_->run({}, {});
    desktop_->run(QStringLiteral("/Applications/One.app"), QStringLiteral("test.one"));
    const auto all = workspace_.runningApplications();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0]->bundleURL(), QUrl::fromLocalFile(QStringLiteral("/Applications/Two.app")));
    EXPECT_EQ(all[0]->bundleIdentifier(), QStringLiteral("test.two"));
    EXPECT_EQ(all[0]->processIdentifier(), ProcessIdentifier{100});
    EXPECT_EQ(all[1]->bundleURL(), QUrl());
    EXPECT_EQ(all[1]->bundleIdentifier(), QString());
    EXPECT_EQ(all[2]->processIdentifier(), ProcessIdentifier{102});
}

TEST_F(MacRunningApplicationTest, TheBundleURLIsStandardised) {
    const auto set = [this](NSURL *url) {
        desktop_->processes()[0]->bundleURL = ObjCOwner<NSURL *>::retained(url);
    };
    desktop_->run(QStringLiteral("/Applications/./x/../One.app"), {});
    const QUrl one = QUrl::fromLocalFile(QStringLiteral("/Applications/One.app"));
    EXPECT_EQ(application(0)->bundleURL(), one);
    // The system marks folders.
    set([NSURL fileURLWithPath:@"/Applications/One.app" isDirectory:YES]);
    EXPECT_EQ(application(0)->bundleURL(), one);
    set([NSURL fileURLWithPath:@"/Applications/e\u0301.app"]);
    EXPECT_EQ(application(0)->bundleURL(),
              QUrl::fromLocalFile(QStringLiteral("/Applications/\u00e9.app")));
}

TEST_F(MacRunningApplicationTest, KnowsWhetherItIsInFront) {
    FakeDesktop::Process &process = desktop_->run(QStringLiteral("/One.app"), {});
    EXPECT_FALSE(application(0)->isActive());
    desktop_->activate(process);
    EXPECT_TRUE(application(0)->isActive());
}

TEST_F(MacRunningApplicationTest, IsActivatedWithOptionTwoAlone) {
    desktop_->run(QStringLiteral("/One.app"), {});
    const auto one = application(0);
    EXPECT_TRUE(one->activate());
    EXPECT_TRUE(one->hide());
    EXPECT_EQ(takeCalls(), (QStringList{QStringLiteral("activateWithOptions 100 2"),
                                        QStringLiteral("hide 100")}));
}

/// The system's version is 15 where nothing else is said.
class ActivationTest : public MacRunningApplicationTest {
protected:
    ~ActivationTest() override { setSystemVersion({15, 1, 0}); }

    FakeDesktop::Process &process_ = desktop_->run(folder_.path(), {});
    const QString activated_ = QStringLiteral("activateWithOptions 100 2");
    const QString opened_ =
        QStringLiteral("openApplicationAtURL ") + folder_.path() + QStringLiteral(" default");
};

TEST_F(ActivationTest, OneThatIsIgnoredIsFollowedByOneOpening) {
    process_.looksUntilActive = std::nullopt;
    EXPECT_TRUE(application(0)->activate());
    EXPECT_EQ(takeCalls(), (QStringList{activated_, opened_}));
    EXPECT_TRUE(application(0)->isActive());
    EXPECT_EQ(desktop_->processes().size(), 1U);
}

TEST_F(ActivationTest, AnOpeningThatIsIgnoredIsNotRepeated) {
    process_.looksUntilActive = std::nullopt;
    desktop_->refuseRequests(QStringLiteral("no"));
    EXPECT_TRUE(application(0)->activate());
    EXPECT_EQ(takeCalls(), (QStringList{activated_, opened_}));
    EXPECT_FALSE(application(0)->isActive());
}

TEST_F(ActivationTest, OneThatIsFollowedLateIsLeftAtThat) {
    process_.looksUntilActive = 1;
    EXPECT_TRUE(application(0)->activate());
    EXPECT_EQ(takeCalls(), QStringList(activated_));
    EXPECT_TRUE(application(0)->isActive());
}

TEST_F(ActivationTest, WhatBelongsToNoBundleIsNotOpened) {
    process_.looksUntilActive = std::nullopt;
    process_.bundleURL = {};
    EXPECT_TRUE(application(0)->activate());
    EXPECT_EQ(takeCalls(), QStringList(activated_));
}

TEST_F(ActivationTest, WhatHasEndedIsNotStartedAgain) {
    const auto one = application(0);
    desktop_->quit(folder_.path());
    EXPECT_FALSE(one->activate());
    EXPECT_EQ(takeCalls(), QStringList(activated_));
}

TEST_F(ActivationTest, BeforeMacOS14TheOptionIsEnough) {
    setSystemVersion({13, 7, 0});
    process_.looksUntilActive = std::nullopt;
    EXPECT_TRUE(application(0)->activate());
    EXPECT_EQ(takeCalls(), QStringList(activated_));
    setSystemVersion({14, 0, 0});
    EXPECT_TRUE(application(0)->activate());
    EXPECT_EQ(takeCalls(), (QStringList{activated_, opened_}));
}

TEST_F(MacRunningApplicationTest, TellsWhatWasNotDelivered) {
    // Nor is there a bundle to open instead.
    desktop_->run({}, {}).acceptsRequests = false;
    const auto one = application(0);
    EXPECT_FALSE(one->activate());
    EXPECT_FALSE(one->hide());
}

TEST_F(MacRunningApplicationTest, HasTheWindowsOfItsProcess) {
    FakeDesktop::Process &process = desktop_->run(QStringLiteral("/One.app"), {});
    desktop_->addWindow(process, QStringLiteral("front"));
    const auto one = application(0);
    EXPECT_EQ(one->windows().size(), 1U);
    EXPECT_EQ(takeCalls(),
              (QStringList{QStringLiteral("AXUIElementCreateApplication 100"),
                           QStringLiteral("AXUIElementCopyAttributeValue 100 AXWindows")}));
}

TEST_F(MacRunningApplicationTest, IsAskedOnTheThreadThatAsks) {
    FakeDesktop::Process &process = desktop_->run(QStringLiteral("/One.app"), {});
    desktop_->addWindow(process, QStringLiteral("front"));
    static_cast<void>(takeCalls());
    std::thread([this] {
        for (const auto &application : workspace_.runningApplications()) {
            EXPECT_EQ(application->windows().size(), 1U);
            application->hide();
            application->activate();
        }
    }).join();
    const QStringList offMainThread = callsOffMainThread();
    EXPECT_EQ(offMainThread.size(), 4);
    EXPECT_EQ(offMainThread, takeCalls());
}

}  // namespace
}  // namespace kestrelbay::macos
