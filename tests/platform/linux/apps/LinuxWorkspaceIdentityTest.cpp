#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include "platform/linux/applications/matching/ApplicationGroups.h"
#include "platform/linux/apps/windows.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

using namespace std::chrono_literals;

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

TEST_F(LinuxWorkspaceWindows, NamesOfEntriesAreBytes) {
    const PrivateHome &home = PrivateHome::instance();
    const QString composed =
        home.writeEntry(QStringLiteral("Caf\u00e9.desktop"), "Exec=/bin/true\nStartupWMClass=Aaa");
    const QString decomposed =
        home.writeEntry(QStringLiteral("Cafe\u0301.desktop"), "Exec=/bin/true\nStartupWMClass=Bbb");
    startWindowManager();
    startWorkspace();
    make("Bbb", 1);
    EXPECT_TRUE(waitForRunning(decomposed));
    EXPECT_FALSE(running(composed));
    EXPECT_NE(workspace().standardized(QUrl::fromLocalFile(composed)),
              workspace().standardized(QUrl::fromLocalFile(decomposed)));
}

TEST_F(LinuxWorkspaceWindows, ALinkToAnEntryIsAnotherEntry) {
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("Link.desktop"));
    ASSERT_TRUE(QFile::link(entry("Aaa"), link));
    startWorkspace();
    EXPECT_FALSE(workspace().followsLinks());
    EXPECT_EQ(workspace().resolved(QUrl::fromLocalFile(link)), QUrl::fromLocalFile(link));
}

TEST_F(LinuxWorkspaceWindows, ARuleMayNameItsEntryByAWayAboveTheRoot) {
    // Outside of the folders, so that it is known by the rule alone.
    const QString path = PrivateHome::instance().write(
        QStringLiteral("elsewhere/aaa.desktop"),
        "[Desktop Entry]\nType=Application\nName=A\nExec=/bin/true\nStartupWMClass=Aaa\n");
    startWindowManager();
    startWorkspace();
    workspace().prepare({QStringLiteral("/..") + path});
    make("Aaa", 1);
    EXPECT_TRUE(waitForRunning(path));
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
    EXPECT_EQ(application->processIdentifier(), kestrelbay::kUnknownProcess);
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
    EXPECT_TRUE(other->activate());
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
    ASSERT_TRUE(QFile::exists(editor));
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
        EXPECT_TRUE(running(path)->activate());
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
