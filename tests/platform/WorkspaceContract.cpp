#include "platform/WorkspaceContract.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <utility>

namespace kestrelbay::testing {

std::unique_ptr<RunningApplication> WorkspaceContract::running(const QString &path) {
    for (auto &application : workspace().runningApplications())
        if (application->bundleURL() == QUrl::fromLocalFile(path))
            return std::move(application);
    return nullptr;
}

bool WorkspaceContract::becomesActive(const QString &path) {
    return stage_->eventually([&] {
        const auto application = running(path);
        return application && application->isActive();
    });
}

bool WorkspaceContract::hasWindows(const QString &path, std::size_t count) {
    return stage_->eventually([&] {
        const auto application = running(path);
        return application && application->windows().size() == count;
    });
}

TEST_P(WorkspaceContract, ARunningApplicationTellsWhoItIs) {
    const QString one = stage_->install(QStringLiteral("one"));
    EXPECT_FALSE(running(one));
    stage_->start(one, 2);
    ASSERT_TRUE(hasWindows(one, 2));
    EXPECT_TRUE(becomesActive(one));
    const auto application = running(one);
    EXPECT_FALSE(application->bundleIdentifier().isEmpty());
    EXPECT_GE(static_cast<std::int64_t>(application->processIdentifier()), 1);
    for (const auto &window : application->windows()) {
        EXPECT_EQ(window->subrole(), QString(kStandardWindowSubrole));
        EXPECT_EQ(window->isMinimized(), false);
    }
}

TEST_P(WorkspaceContract, ARunningApplicationIsFoundByEveryWayToItsPlace) {
    const QString one = stage_->install(QStringLiteral("one"));
    const QString two = stage_->install(QStringLiteral("two"));
    stage_->start(one, 1);
    ASSERT_TRUE(hasWindows(one, 1));
    const QUrl place = running(one)->bundleURL();
    for (const QString &way :
         {one, QString(one).replace(u'/', QStringLiteral("/./")), QStringLiteral("/x/..") + one,
          QStringLiteral("/..") + one, QStringLiteral("/../..") + one,
          two + QStringLiteral("/../") + one.section(u'/', -1)})
        EXPECT_EQ(workspace().standardized(QUrl::fromLocalFile(way)), place) << way.toStdString();
    for (const QString &other : {two, QStringLiteral("/x") + one, one.toUpper()})
        EXPECT_NE(workspace().standardized(QUrl::fromLocalFile(other)), place)
            << other.toStdString();
    EXPECT_EQ(workspace().standardized(QUrl()), QUrl());
}

TEST_P(WorkspaceContract, OneApplicationIsActive) {
    const QString one = stage_->install(QStringLiteral("one"));
    const QString two = stage_->install(QStringLiteral("two"));
    stage_->start(one, 1);
    stage_->start(two, 1);
    ASSERT_TRUE(becomesActive(two));
    const auto applications = workspace().runningApplications();
    EXPECT_EQ(std::count_if(applications.begin(), applications.end(),
                            [](const auto &application) { return application->isActive(); }),
              1);
    EXPECT_TRUE(running(one)->activate());
    EXPECT_TRUE(becomesActive(one));
    EXPECT_FALSE(running(two)->isActive());
}

TEST_P(WorkspaceContract, AHiddenApplicationIsNotActiveUntilItIsActivated) {
    const QString one = stage_->install(QStringLiteral("one"));
    const QString two = stage_->install(QStringLiteral("two"));
    stage_->start(two, 1);
    stage_->start(one, 1);
    ASSERT_TRUE(becomesActive(one));
    EXPECT_TRUE(running(one)->hide());
    EXPECT_TRUE(stage_->eventually([&] { return running(one) && !running(one)->isActive(); }));
    // Hidden windows are still windows.
    EXPECT_EQ(running(one)->windows().size(), 1U);
    const auto application = running(one);
    for (const auto &window : application->windows())
        if (window->isMinimized() == true)
            window->setMinimized(false);
    EXPECT_TRUE(application->activate());
    EXPECT_TRUE(becomesActive(one));
}

TEST_P(WorkspaceContract, MinimisedWindowsStayInTheListAndComeBack) {
    const QString one = stage_->install(QStringLiteral("one"));
    stage_->start(one, 1);
    ASSERT_TRUE(hasWindows(one, 1));
    const auto minimised = [&](bool value) {
        return stage_->eventually([&] {
            const auto application = running(one);
            if (!application)
                return false;
            const auto windows = application->windows();
            return windows.size() == 1 && windows[0]->isMinimized() == value;
        });
    };
    EXPECT_TRUE(running(one)->windows().at(0)->setMinimized(true));
    EXPECT_TRUE(minimised(true));
    EXPECT_TRUE(running(one)->windows().at(0)->setMinimized(false));
    EXPECT_TRUE(minimised(false));
}

TEST_P(WorkspaceContract, AnActivatedApplicationComesFirstAmongWindowsOfItsOwn) {
    const QString one = stage_->install(QStringLiteral("one"));
    stage_->start(one, 3);
    ASSERT_TRUE(hasWindows(one, 3));
    ASSERT_TRUE(becomesActive(one));
    // The back-most comes forward each time; the list never shrinks.
    for (int i = 0; i < 4; ++i) {
        const auto application = running(one);
        const auto windows = application->windows();
        ASSERT_EQ(windows.size(), 3U);
        EXPECT_TRUE(windows.back()->setMain());
        EXPECT_TRUE(windows.back()->setFocused());
        EXPECT_TRUE(application->activate());
        EXPECT_TRUE(becomesActive(one));
    }
}

TEST_P(WorkspaceContract, LaunchingAnApplicationMakesItRun) {
    const QString one = stage_->install(QStringLiteral("one"));
    EXPECT_TRUE(workspace().open(QUrl::fromLocalFile(one)));
    EXPECT_TRUE(hasWindows(one, 1));
    EXPECT_TRUE(becomesActive(one));
}

TEST_P(WorkspaceContract, ANewInstanceCompletesOnceWithoutAnError) {
    const QString one = stage_->install(QStringLiteral("one"));
    std::atomic<int> completions{0};
    QString error = QStringLiteral("none yet");
    workspace().openApplication(QUrl::fromLocalFile(one), {QStringLiteral("a b")},
                                [&](const QString &text) {
                                    error = text;
                                    ++completions;
                                });
    EXPECT_TRUE(stage_->eventually([&] { return completions > 0; }));
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(error, QString());
    EXPECT_TRUE(hasWindows(one, 1));
}

TEST_P(WorkspaceContract, WhatIsNotThereCannotBeOpened) {
    const QUrl nothing = QUrl::fromLocalFile(QStringLiteral("/no/such/application.desktop"));
    EXPECT_FALSE(workspace().open(nothing));
    EXPECT_FALSE(workspace().openFiles({QUrl::fromLocalFile(QStringLiteral("/etc"))}, nothing));
    std::atomic<int> completions{0};
    QString error;
    workspace().openApplication(nothing, {QStringLiteral("x")}, [&](const QString &text) {
        error = text;
        ++completions;
    });
    EXPECT_TRUE(stage_->eventually([&] { return completions > 0; }));
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(error.isEmpty());
}

TEST_P(WorkspaceContract, WhatHasGoneReadsAsNothingAndTakesRequests) {
    const QString one = stage_->install(QStringLiteral("one"));
    stage_->start(one, 1);
    ASSERT_TRUE(hasWindows(one, 1));
    const auto application = running(one);
    const auto windows = application->windows();
    stage_->quit(one);
    EXPECT_TRUE(stage_->eventually([&] { return !running(one); }));
    EXPECT_TRUE(stage_->eventually([&] { return !windows[0]->isMinimized().has_value(); }));
    EXPECT_FALSE(windows[0]->subrole().has_value());
    windows[0]->setMinimized(false);
    windows[0]->setMain();
    windows[0]->setFocused();
    windows[0]->raise();
    application->hide();
    application->activate();
    EXPECT_TRUE(application->windows().empty());
}

TEST_P(WorkspaceContract, EveryThreadMayAsk) {
    const QString one = stage_->install(QStringLiteral("one"));
    stage_->start(one, 2);
    ASSERT_TRUE(hasWindows(one, 2));
    std::atomic<int> found{0};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int j = 0; j < 10; ++j)
                if (const auto application = running(one);
                    application && application->windows().size() == 2)
                    ++found;
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(found, 40);
}

}  // namespace kestrelbay::testing
