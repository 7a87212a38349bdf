#include <csignal>

#include <gtest/gtest.h>

#include "platform/linux/apps/windows.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

using namespace std::chrono_literals;

TEST_F(LinuxWorkspaceWindows, WithoutAServerThereIsNothing) {
    const auto nowhere = makeWorkspaceOfX(QStringLiteral(":9999"), log_);
    EXPECT_TRUE(nowhere->runningApplications().empty());
    nowhere->prepare({QStringLiteral("/x.desktop")});
    EXPECT_FALSE(nowhere->openUrl(QStringLiteral("no-such-scheme://x")));
}

TEST_F(LinuxWorkspaceWindows, WindowManagersComeAndGo) {
    const QString a = entry("Aaa");
    const xcb_window_t window = maker_->make({.className = "Aaa"});
    startWorkspace();
    EXPECT_TRUE(workspace().runningApplications().empty());

    startWindowManager();
    ASSERT_TRUE(waitForRunning(a));
    const Application old = running(a);
    windowManager_->kill();
    EXPECT_TRUE(waitUntil([&] { return workspace().runningApplications().empty(); }));
    EXPECT_TRUE(old->activate());

    startWindowManager(QStringLiteral("metacity"));
    ASSERT_TRUE(waitForRunning(a));
    EXPECT_TRUE(maker_->managed({window}));
    windowManager_.reset();
    EXPECT_TRUE(waitUntil([&] { return workspace().runningApplications().empty(); }));
}

TEST_F(LinuxWorkspaceWindows, AWindowManagerMayLoseItsAnnouncement) {
    const QString a = entry("Aaa");
    startWindowManager(QStringLiteral("mutter"));
    startWorkspace();
    make("Aaa", 1);
    ASSERT_TRUE(waitForRunning(a));
    server_->replaceWindowManager(windowManager_, QStringLiteral("mutter"));
    EXPECT_TRUE(waitForRunning(a));
    windowManager_->kill();
    EXPECT_TRUE(waitUntil([&] { return workspace().runningApplications().empty(); }));
}

TEST_F(LinuxWorkspaceWindows, AServerThatGoesTakesTheWindowsAlong) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    make("Aaa", 1);
    const Application application = waitForRunning(a);
    ASSERT_TRUE(application);
    const auto windows = application->windows();
    server_->process().kill();
    EXPECT_TRUE(waitUntil([&] { return workspace().runningApplications().empty(); }));
    EXPECT_FALSE(windows[0]->setFocused());
    EXPECT_FALSE(windows[0]->setMinimized(true));
    EXPECT_FALSE(windows[0]->isMinimized().has_value());
    EXPECT_FALSE(application->activate());
}

TEST_F(LinuxWorkspaceWindows, TellsWhoItIs) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    make("Aaa", 1);
    const Application application = waitForRunning(a);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), QStringLiteral("Aaa.desktop"));
    EXPECT_EQ(application->processIdentifier(), ProcessIdentifier{getpid()});
    EXPECT_TRUE(application->isActive());
    EXPECT_EQ(application->windows()[0]->subrole(), QString(kStandardWindowSubrole));
    EXPECT_EQ(application->windows()[0]->isMinimized(), false);
}

TEST_F(LinuxWorkspaceWindows, WindowsComeFrontMostFirstAndCycle) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 3);
    // Front to back they are 2 1 0: presses bring 0, 1, 2 and 0 again.
    for (const std::size_t next : {0U, 1U, 2U, 0U}) {
        const Application application = waitForRunning(a, 3);
        ASSERT_TRUE(application);
        const auto list = application->windows();
        maker_->listen();
        EXPECT_TRUE(maker_->heard().empty());
        EXPECT_TRUE(list.back()->setMain());
        EXPECT_TRUE(list.back()->setFocused());
        EXPECT_TRUE(application->activate());
        EXPECT_TRUE(waitUntil([&] { return maker_->active() == windows[next]; })) << next;
        // The activation that follows the focus says nothing new.
        const auto said = maker_->heard();
        ASSERT_EQ(said.size(), 1U);
        EXPECT_EQ(said[0].window, windows[next]);
        EXPECT_EQ(said[0].type, maker_->atom("_NET_ACTIVE_WINDOW"));
        EXPECT_EQ(said[0].data[0], 2U);
        EXPECT_NE(said[0].data[1], 0U);
    }
}

TEST_F(LinuxWorkspaceWindows, ActivatesWithTheMainWindowOrTheFrontMost) {
    const QString a = entry("Aaa");
    entry("Bbb");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 2);
    make("Bbb", 1);
    Application application = waitForRunning(a, 2);
    ASSERT_TRUE(application);
    EXPECT_FALSE(application->isActive());
    application->activate();
    EXPECT_TRUE(waitUntil([&] { return maker_->active() == windows[1]; }));

    application = running(a);
    application->windows().back()->setMain();
    application->activate();
    EXPECT_TRUE(waitUntil([&] { return maker_->active() == windows[0]; }));
}

TEST_F(LinuxWorkspaceWindows, TheTimeOfAnActivationIsFresh) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    make("Aaa", 1);
    const Application application = waitForRunning(a);
    ASSERT_TRUE(application);
    maker_->listen();
    application->activate();
    std::vector<WindowMaker::Message> first;
    ASSERT_TRUE(waitUntil([&] {
        first = maker_->heard();
        return !first.empty();
    }));
    // Held for longer than a press takes, it asks for the time again.
    std::uint32_t last = first[0].data[1];
    EXPECT_TRUE(waitUntil([&] {
        application->activate();
        const auto said = maker_->heard();
        return said.size() == 1 && said[0].data[1] > last;
    }));
}

TEST_F(LinuxWorkspaceWindows, AMinimisedWindowStillNamedAsActiveIsNot) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    ASSERT_TRUE(becomesActive(a));
    running(a)->hide();
    ASSERT_TRUE(waitUntil([&] { return maker_->isIconic(windows[0]); }));
    ASSERT_TRUE(waitUntil([&] { return maker_->active() == XCB_NONE; }));
    // As the window manager would have it a moment earlier.
    maker_->setRaw(maker_->connection().root(), "_NET_ACTIVE_WINDOW", "WINDOW", 32,
                   QByteArray(reinterpret_cast<const char *>(windows.data()), 4));
    ASSERT_EQ(maker_->active(), windows[0]);
    EXPECT_FALSE(running(a)->isActive());
}

TEST_F(LinuxWorkspaceWindows, AWindowThatIsMinimisedButStillMappedComesBack) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    ASSERT_TRUE(becomesActive(a));
    // As the window manager has it for a moment, and some have it for good.
    const xcb_atom_t hidden = maker_->atom("_NET_WM_STATE_HIDDEN");
    maker_->setRaw(windows[0], "_NET_WM_STATE", "ATOM", 32,
                   QByteArray(reinterpret_cast<const char *>(&hidden), 4));
    const auto list = running(a)->windows();
    ASSERT_EQ(list.size(), 1U);
    ASSERT_EQ(list[0]->isMinimized(), true);
    maker_->listen();
    EXPECT_TRUE(list[0]->setMinimized(false));
    // Whoever asks wants it done by then.
    EXPECT_TRUE(list[0]->isMinimized().has_value());
    EXPECT_TRUE(waitUntil([&] {
        const auto said = maker_->heard();
        return said.size() == 1 && said[0].window == windows[0] &&
               said[0].type == maker_->atom("_NET_ACTIVE_WINDOW");
    }));
}

class UnderWindowManager : public LinuxWorkspaceWindows,
                           public ::testing::WithParamInterface<const char *> {};

TEST_P(UnderWindowManager, HidesAndComesBack) {
    const QString a = entry("Aaa");
    const QString b = entry("Bbb");
    startWindowManager(QLatin1String(GetParam()));
    startWorkspace();
    make("Bbb", 1);
    const auto windows = make("Aaa", 2);
    const xcb_window_t dialog = maker_->make({.className = "Aaa", .transientFor = windows[1]});
    ASSERT_TRUE(waitUntil([&] { return maker_->managed({dialog}); }));

    Application application = waitForRunning(a, 2);
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->hide());
    EXPECT_TRUE(waitUntil([&] {
        return maker_->isIconic(windows[0]) && maker_->isIconic(windows[1]) &&
               maker_->isIconic(dialog);
    }));
    EXPECT_TRUE(waitUntil([&] { return !running(a)->isActive(); }));

    application = running(a);
    const auto list = application->windows();
    ASSERT_EQ(list.size(), 2U);
    for (const auto &window : list) {
        EXPECT_EQ(window->isMinimized(), true);
        EXPECT_TRUE(window->setMinimized(false));
    }
    EXPECT_TRUE(application->activate());
    EXPECT_TRUE(becomesActive(a));
    EXPECT_TRUE(waitUntil([&] {
        return !maker_->isIconic(windows[0]) && !maker_->isIconic(windows[1]) &&
               !maker_->isIconic(dialog);
    }));
    for (const auto &window : running(a)->windows())
        EXPECT_EQ(window->isMinimized(), false);
}

TEST_P(UnderWindowManager, MinimisesRaisesAndActivates) {
    const QString a = entry("Aaa");
    const QString b = entry("Bbb");
    startWindowManager(QLatin1String(GetParam()));
    startWorkspace();
    const auto windows = make("Aaa", 2);
    make("Bbb", 1);
    ASSERT_TRUE(becomesActive(b));
    const auto minimised = [&](std::size_t i) {
        const Application application = running(a);
        const auto list = application->windows();
        return list.size() > i ? list[i]->isMinimized() : std::nullopt;
    };
    running(a)->windows()[0]->setMinimized(true);
    EXPECT_TRUE(waitUntil([&] { return minimised(0) == true || minimised(1) == true; }));
    for (const auto &window : running(a)->windows())
        window->setMinimized(false);
    EXPECT_TRUE(waitUntil([&] { return minimised(0) == false && minimised(1) == false; }));

    Application application = waitForRunning(a, 2);
    application->windows()[1]->raise();
    EXPECT_TRUE(waitUntil([&] {
        const auto order = maker_->words(maker_->connection().root(), "_NET_CLIENT_LIST_STACKING");
        return !order.empty() && (order.back() == windows[0] || order.back() == windows[1]);
    }));
    running(b)->activate();
    EXPECT_TRUE(becomesActive(b));
    running(a)->activate();
    EXPECT_TRUE(becomesActive(a));
}

INSTANTIATE_TEST_SUITE_P(All, UnderWindowManager, ::testing::Values("openbox", "metacity"),
                         [](const auto &program) { return std::string(program.param); });

TEST_F(LinuxWorkspaceWindows, OnlyWindowsToSwitchToAreListed) {
    const QString a = entry("Aaa");
    const QString d = entry("Desk");
    const QString p = entry("Palette");
    startWindowManager();
    startWorkspace();
    const auto main = make("Aaa", 1);
    std::vector<xcb_window_t> others{
        maker_->make({.className = "Aaa", .transientFor = main[0]}),
        maker_->make({.className = "Aaa", .skipsTaskbar = true}),
        maker_->make({.className = "Aaa", .type = "_NET_WM_WINDOW_TYPE_UTILITY"}),
        maker_->make({.className = "Aaa", .type = "_NET_WM_WINDOW_TYPE_DOCK"}),
        maker_->make({.className = "Aaa", .type = "_NET_WM_WINDOW_TYPE_SPLASH"}),
        maker_->make({.className = "Desk", .type = "_NET_WM_WINDOW_TYPE_DESKTOP"}),
        maker_->make({.className = "Palette", .type = "_NET_WM_WINDOW_TYPE_UTILITY"}),
    };
    ASSERT_TRUE(waitUntil([&] { return maker_->managed(others); }));
    ASSERT_TRUE(waitForRunning(a));
    EXPECT_EQ(running(a)->windows().size(), 1U);
    // Running, but with nothing to show.
    ASSERT_TRUE(running(d));
    EXPECT_TRUE(running(d)->windows().empty());
    EXPECT_FALSE(running(d)->activate());
    // Better a palette than nothing.
    ASSERT_EQ(running(p)->windows().size(), 1U);
    EXPECT_EQ(running(p)->windows()[0]->subrole(), QStringLiteral("AXFloatingWindow"));

    // With a dialog in front, its application is the active one.
    maker_->activate(others[0]);
    EXPECT_TRUE(becomesActive(a));
    maker_->destroy(main[0]);
    EXPECT_TRUE(waitUntil([&] {
        const Application application = running(a);
        return application && application->windows().size() >= 2;
    }));
}

TEST_F(LinuxWorkspaceWindows, ADialogWithoutNameIsItsOwners) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto main = make("Aaa", 1);
    const xcb_window_t dialog = maker_->make({.transientFor = main[0]});
    ASSERT_TRUE(waitUntil([&] { return maker_->managed({dialog}); }));
    maker_->activate(dialog);
    ASSERT_TRUE(waitUntil([&] { return maker_->active() == dialog; }));
    EXPECT_TRUE(running(a)->isActive());
    // Two that name each other belong to nobody, and nobody hangs.
    const xcb_window_t one = maker_->make({});
    const xcb_window_t two = maker_->make({.transientFor = one});
    ASSERT_TRUE(waitUntil([&] { return maker_->managed({one, two}); }));
    maker_->setRaw(one, "WM_TRANSIENT_FOR", "WINDOW", 32,
                   QByteArray(reinterpret_cast<const char *>(&two), sizeof two));
    EXPECT_FALSE(workspace().runningApplications().empty());
}

}  // namespace
}  // namespace kestrelbay::testing
