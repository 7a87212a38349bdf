#include <gtest/gtest.h>

#include "platform/linux/apps/desktop.h"
#include "platform/linux/apps/turns.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

class WindowRoundTrips : public AppsDesktop, public ::testing::WithParamInterface<int> {
protected:
    /// What a press does that finds its application running: list, read, decide.
    static void press(LinuxWorkspace &workspace, const QUrl &url) {
        for (const auto &application : workspace.runningApplications()) {
            if (application->bundleURL() != url)
                continue;
            static_cast<void>(application->windows());
            for (const auto &window : application->windows())
                static_cast<void>(window->isMinimized());
            return;
        }
        FAIL() << "not running";
    }
};

TEST_P(WindowRoundTrips, IsOneHoweverManyWindows) {
    const QString entry = PrivateHome::instance().writeEntry(QStringLiteral("Aaa.desktop"),
                                                             "Exec=/bin/true\nStartupWMClass=Aaa");
    PrivateHome::instance().writeEntry(QStringLiteral("Bbb.desktop"),
                                       "Exec=/bin/true\nStartupWMClass=Bbb");
    startWindowManager();
    std::vector<xcb_window_t> windows;
    windows.reserve(static_cast<std::size_t>(GetParam()));
    for (int i = 0; i < GetParam(); ++i)
        windows.push_back(maker_->make({.className = i % 2 == 0 ? "Aaa" : "Bbb"}));
    ASSERT_TRUE(waitUntil([&] { return maker_->managed(windows); }, std::chrono::seconds(30)));

    const QUrl url = QUrl::fromLocalFile(entry);
    TurnCounter counter(server_->displayName());
    {
        const auto counted = makeWorkspaceOfX(counter.displayName(), log_);
        // The first press asks for states that nobody has asked for before.
        press(*counted, url);
        // The window manager may still be busy with its windows; on a busy machine a
        // press may take so long that it has to look again, and the counter take an
        // answer and the next question for one turn.
        EXPECT_TRUE(waitUntil([&] {
            const int before = counter.turns();
            for (int i = 0; i < 10; ++i)
                press(*counted, url);
            return counter.turns() - before == 10;
        })) << counter.turns();
        // A state that has changed meanwhile comes along with the list.
        for (int i = 0; i < 10; ++i) {
            EXPECT_TRUE(waitUntil([&] {
                maker_->setRaw(windows[0], "_NET_WM_STATE", "ATOM", 32, {});
                const int before = counter.turns();
                press(*counted, url);
                return counter.turns() - before == 1;
            })) << counter.turns();
        }
        // What was asked ahead need not be asked again.
        EXPECT_TRUE(waitUntil([&] {
            const int before = counter.turns();
            for (int i = 0; i < 10; ++i) {
                counted->askAhead();
                press(*counted, url);
            }
            return counter.turns() - before == 10;
        })) << counter.turns();
    }
}

INSTANTIATE_TEST_SUITE_P(Windows, WindowRoundTrips, ::testing::Values(2, 200));

}  // namespace
}  // namespace kestrelbay::testing
