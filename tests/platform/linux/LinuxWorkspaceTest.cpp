#include <atomic>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>

#include <unistd.h>

#include <QDir>
#include <QFile>

#include "appsDesktop.h"
#include "platform/linux/LinuxRunningApplication.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

using namespace std::chrono_literals;

class LinuxWorkspaceWindows : public AppsDesktop {
protected:
    /// An entry for windows that the test makes itself.
    QString entry(const char *name) {
        const QString file = QLatin1String(name) + QStringLiteral(".desktop");
        return PrivateHome::instance().writeEntry(
            file, QByteArray("Exec=/bin/true\nStartupWMClass=") + name);
    }

    /// Windows of that class, the last one in front.
    std::vector<xcb_window_t> make(const char *className, int count) {
        std::vector<xcb_window_t> windows;
        for (int i = 0; i < count; ++i) {
            windows.push_back(maker_->make({.className = className}));
            // One after the other, or their order is the window manager's choice.
            EXPECT_TRUE(waitUntil([&] { return maker_->managed({windows.back()}); }));
            maker_->activate(windows.back());
            EXPECT_TRUE(waitUntil([&] { return maker_->active() == windows.back(); }));
        }
        return windows;
    }
};

TEST_F(LinuxWorkspaceWindows, WithoutAServerThereIsNothing) {
    x11::LinuxWorkspace nowhere(QStringLiteral(":9999"), log_);
    EXPECT_TRUE(nowhere.runningApplications().empty());
    nowhere.prepare({QStringLiteral("/x.desktop")});
    EXPECT_FALSE(nowhere.open(QUrl(QStringLiteral("no-such-scheme://x"))));
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
    EXPECT_TRUE(old->activate(ActivationOption::IgnoringOtherApps));

    startWindowManager(QStringLiteral("metacity"));
    ASSERT_TRUE(waitForRunning(a));
    EXPECT_TRUE(maker_->managed({window}));
    windowManager_.reset();
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
    EXPECT_FALSE(application->activate(ActivationOption::IgnoringOtherApps));
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
        EXPECT_TRUE(application->activate(ActivationOption::IgnoringOtherApps));
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
    application->activate(ActivationOption::IgnoringOtherApps);
    EXPECT_TRUE(waitUntil([&] { return maker_->active() == windows[1]; }));

    application = running(a);
    application->windows().back()->setMain();
    application->activate(ActivationOption::IgnoringOtherApps);
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
    application->activate(ActivationOption::IgnoringOtherApps);
    const auto first = maker_->heard();
    ASSERT_EQ(first.size(), 1U);
    // Held for longer than a press takes, it asks for the time again.
    std::uint32_t last = first[0].data[1];
    EXPECT_TRUE(waitUntil([&] {
        application->activate(ActivationOption::IgnoringOtherApps);
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
    EXPECT_TRUE(application->activate(ActivationOption::IgnoringOtherApps));
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
    running(b)->activate(ActivationOption::IgnoringOtherApps);
    EXPECT_TRUE(becomesActive(b));
    running(a)->activate(ActivationOption::IgnoringOtherApps);
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
    EXPECT_FALSE(running(d)->activate(ActivationOption::IgnoringOtherApps));
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

TEST_F(LinuxWorkspaceWindows, IdentityFollowsTheWindow) {
    const QString a = entry("Aaa");
    const QString b = entry("Bbb");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    ASSERT_TRUE(waitForRunning(a));
    // Without any waiting: what the server was told before the question counts.
    for (int i = 0; i < 50; ++i) {
        maker_->setText(windows[0], "WM_CLASS", QByteArray("x\0Bbb\0", 6));
        EXPECT_FALSE(running(a)) << i;
        EXPECT_TRUE(running(b)) << i;
        maker_->setText(windows[0], "WM_CLASS", QByteArray("x\0Aaa\0", 6));
        EXPECT_TRUE(running(a)) << i;
        EXPECT_FALSE(running(b)) << i;
    }
    // Stronger claims win.
    maker_->setText(windows[0], "_GTK_APPLICATION_ID", "Bbb");
    EXPECT_TRUE(running(b));
    EXPECT_FALSE(running(a));
}

TEST_F(LinuxWorkspaceWindows, NothingThatAClientWritesDoesHarm) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    make("Aaa", 1);
    const QByteArray noise(3 << 20, '\xff');
    const QByteArray odd("\xff\xfe\x00\x80\xc3", 5);
    for (const char *property :
         {"WM_CLASS", "_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE", "WM_TRANSIENT_FOR",
          "_NET_WM_WINDOW_TYPE", "_NET_WM_PID", "WM_CLIENT_MACHINE"})
        for (const int format : {8, 16, 32}) {
            const xcb_window_t window = maker_->make({.className = "Bad"});
            maker_->setRaw(window, property, "CARDINAL", format,
                           format == 16 ? noise.first(100) : noise.first(4000));
            maker_->setRaw(window, property, "STRING", format, odd.first(4));
            maker_->setRaw(window, property, "WINDOW", format, {});
            EXPECT_TRUE(running(a)) << property << format;
        }
    maker_->setRaw(maker_->make({}), "WM_CLASS", "STRING", 8, noise.first(200000));
    // A window manager gone mad.
    windowManager_.reset();
    startWindowManager();
    const xcb_window_t root = maker_->connection().root();
    for (const char *list : {"_NET_CLIENT_LIST_STACKING", "_NET_CLIENT_LIST"}) {
        maker_->setRaw(root, list, "WINDOW", 32, noise.first(400000));
        static_cast<void>(workspace().runningApplications());
        maker_->setRaw(root, list, "STRING", 8, odd);
        static_cast<void>(workspace().runningApplications());
    }
    for (const char *single : {"_NET_ACTIVE_WINDOW", "_NET_SUPPORTING_WM_CHECK"}) {
        maker_->setRaw(root, single, "WINDOW", 32, {});
        static_cast<void>(workspace().runningApplications());
        maker_->setRaw(root, single, "CARDINAL", 16, odd.first(4));
        static_cast<void>(workspace().runningApplications());
    }
    EXPECT_TRUE(workspace().runningApplications().empty());
}

TEST_F(LinuxWorkspaceWindows, AnonymousWindowsAndThoseOfOtherMachines) {
    server_ = std::make_unique<PrivateXServer>(
        QStringList{QStringLiteral("-listen"), QStringLiteral("tcp"), QStringLiteral("-ac")});
    maker_ = std::make_unique<WindowMaker>(server_->displayName());
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    // Over the network the server knows no process.
    WindowMaker remote(QStringLiteral("127.0.0.1") + server_->displayName());
    ASSERT_TRUE(remote.connection().isUsable());
    const xcb_window_t nameless = remote.make({});
    ASSERT_TRUE(waitUntil([&] { return remote.managed({nameless}); }));
    EXPECT_TRUE(workspace().runningApplications().empty());

    remote.make({.className = "Aaa"});
    const Application application = waitForRunning(a);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->processIdentifier(), x11::kRemoteProcess);
    EXPECT_TRUE(application->hide());
}

TEST_F(LinuxWorkspaceWindows, VanishedWindowsReadAsNothing) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 2);
    const Application application = waitForRunning(a, 2);
    ASSERT_TRUE(application);
    const auto list = application->windows();
    maker_->destroy(windows[1]);
    EXPECT_TRUE(waitUntil([&] { return !list[0]->isMinimized().has_value(); }));
    EXPECT_FALSE(list[0]->subrole().has_value());
    EXPECT_TRUE(list[1]->isMinimized().has_value());
    list[0]->setMinimized(false);
    list[0]->setFocused();
    list[0]->raise();
    EXPECT_EQ(application->windows().size(), 1U);
    // Outlives the workspace.
    const Application other = running(a);
    workspace_.reset();
    EXPECT_EQ(other->windows().size(), 1U);
    EXPECT_TRUE(other->activate(ActivationOption::IgnoringOtherApps));
}

TEST_F(LinuxWorkspaceWindows, ManyThreadsWhileWindowsComeAndGo) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    make("Aaa", 2);
    ASSERT_TRUE(waitForRunning(a, 2));
    std::atomic<bool> stop{false};
    std::atomic<int> presses{0};
    std::atomic<int> misses{0};
    std::vector<std::thread> threads;
    threads.reserve(6);
    for (int i = 0; i < 6; ++i)
        threads.emplace_back([&] {
            while (!stop) {
                const Application application = running(a);
                if (!application || application->windows().size() < 2)
                    ++misses;
                else
                    application->windows().back()->setFocused();
                ++presses;
            }
        });
    for (int i = 0; i < 30; ++i) {
        std::vector<xcb_window_t> more;
        more.reserve(10);
        for (int j = 0; j < 10; ++j)
            more.push_back(maker_->make({.className = j % 2 == 0 ? "Aaa" : "Bbb"}));
        EXPECT_TRUE(waitUntil([&] { return maker_->managed(more); }));
        for (const xcb_window_t window : more)
            maker_->destroy(window);
    }
    EXPECT_TRUE(waitUntil([&] { return presses > 200; }));
    stop = true;
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(misses, 0);
}

TEST_F(LinuxWorkspaceWindows, CopiesAndShadowedFilesAreTargetsToo) {
    const QString winning = entry("Aaa");
    const QByteArray text =
        "[Desktop Entry]\nType=Application\nName=Thing\nExec=/bin/true\nStartupWMClass=Aaa\n";
    const PrivateHome &home = PrivateHome::instance();
    const QString shadowed = home.write(QStringLiteral("system/applications/Aaa.desktop"), text);
    const QString copy = home.write(QStringLiteral("elsewhere/mine.desktop"), text);
    startWindowManager();
    startWorkspace();
    make("Aaa", 1);
    ASSERT_TRUE(waitForRunning(winning));
    EXPECT_TRUE(running(shadowed));
    EXPECT_FALSE(running(copy));
    workspace().prepare({copy});
    // The press right after it finds it.
    const Application application = running(copy);
    ASSERT_TRUE(application);
    EXPECT_TRUE(application->isActive());
    EXPECT_EQ(application->bundleIdentifier(), QStringLiteral("mine.desktop"));
}

TEST_F(LinuxWorkspaceWindows, RealProgramsAreRecognisedAndSwitched) {
    const QString editor = QStringLiteral("/usr/share/applications/org.xfce.mousepad.desktop");
    if (!QFile::exists(editor))
        GTEST_SKIP() << "no mousepad";
    const QString terminal = PrivateHome::instance().writeEntry(
        QStringLiteral("some-terminal.desktop"), "Exec=xterm -e sleep 600");
    // Refuses to raise a window for a request that is older than the last deed.
    startWindowManager(QStringLiteral("metacity"));
    startWorkspace();
    for (const QString &path : {terminal, editor}) {
        ASSERT_TRUE(workspace().open(QUrl::fromLocalFile(path)));
        ASSERT_TRUE(waitForRunning(path)) << path.toStdString();
        EXPECT_TRUE(becomesActive(path)) << path.toStdString();
    }
    for (const QString &path : {terminal, editor, terminal}) {
        EXPECT_TRUE(running(path)->activate(ActivationOption::IgnoringOtherApps));
        EXPECT_TRUE(becomesActive(path)) << path.toStdString();
    }
    EXPECT_TRUE(running(terminal)->hide());
    EXPECT_TRUE(becomesActive(editor));
    EXPECT_TRUE(running(terminal)->windows().at(0)->isMinimized() == true);
    // Started by somebody else, the system's own entry claims it.
    const ChildProcess other(QStringLiteral("xterm"), {}, server_->environment());
    EXPECT_TRUE(waitForRunning(QStringLiteral("/usr/share/applications/debian-xterm.desktop")));
    EXPECT_EQ(running(terminal)->windows().size(), 1U);
    for (const QString &path : {terminal, editor})
        ::kill(static_cast<pid_t>(running(path)->processIdentifier()), SIGTERM);
}

TEST_F(LinuxWorkspaceWindows, NewEntriesAreNoticed) {
    startWindowManager();
    startWorkspace();
    make("Later", 1);
    EXPECT_EQ(workspace().fileManagerIdentifier().isEmpty(), false);
    const QString later = entry("Later");
    EXPECT_TRUE(waitForRunning(later));
    // Also in a folder that wasn't there, and no longer when they go.
    const QString deep = PrivateHome::instance().write(
        QStringLiteral("home/applications/new/folder/x.desktop"),
        "[Desktop Entry]\nType=Application\nName=X\nExec=/bin/true\nStartupWMClass=Later\n");
    const Application application = waitForRunning(deep);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), QStringLiteral("new-folder-x.desktop"));
    QFile::remove(later);
    EXPECT_TRUE(waitUntil([&] { return !running(later); }));
}

TEST_F(LinuxWorkspaceWindows, TheFileManagerIsTheUsersChoice) {
    const PrivateHome &home = PrivateHome::instance();
    home.writeEntry(QStringLiteral("files-one.desktop"),
                    "Exec=/bin/true %U\nMimeType=inode/directory;");
    home.writeEntry(QStringLiteral("files-two.desktop"),
                    "Exec=/bin/true %U\nMimeType=inode/directory;");
    home.write(QStringLiteral("config/mimeapps.list"),
               "[Default Applications]\ninode/directory=files-one.desktop\n");
    startWorkspace();
    EXPECT_TRUE(waitUntil([&] {
        return workspace().fileManagerIdentifier() == QStringLiteral("files-one.desktop");
    }));
    home.write(QStringLiteral("config/mimeapps.list"),
               "[Default Applications]\ninode/directory=files-two.desktop\n");
    EXPECT_TRUE(waitUntil([&] {
        return workspace().fileManagerIdentifier() == QStringLiteral("files-two.desktop");
    }));
}

}  // namespace
}  // namespace kestrelbay::testing
