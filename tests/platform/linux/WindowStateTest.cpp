#include <array>
#include <bit>

#include "appsWindows.h"

namespace kestrelbay::testing {
namespace {

class WindowStateOnTheServer : public LinuxWorkspaceWindows {
protected:
    void setHidden(xcb_window_t window, bool hidden) {
        const auto state = std::bit_cast<std::array<char, 4>>(maker_->atom("_NET_WM_STATE_HIDDEN"));
        maker_->setRaw(window, "_NET_WM_STATE", "ATOM", 32,
                       hidden ? QByteArray(state.data(), state.size()) : QByteArray());
    }
    void askAhead() {
        workspace().pressBegins();
        workspace().askAhead();
    }
    [[nodiscard]] static std::optional<bool> isMinimized(const Application &application) {
        const auto windows = application->windows();
        return windows.empty() ? std::nullopt : windows[0]->isMinimized();
    }
};

TEST_F(WindowStateOnTheServer, IsSeenAsOfThePress) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    ASSERT_TRUE(waitForRunning(a));
    // Without any waiting: what the server was told before the question counts.
    for (int i = 0; i < 50; ++i) {
        for (const bool hidden : {true, false}) {
            setHidden(windows[0], hidden);
            if (i % 2 == 1)
                askAhead();
            const Application application = running(a);
            ASSERT_TRUE(application);
            EXPECT_EQ(isMinimized(application), hidden) << i;
        }
    }
}

TEST_F(WindowStateOnTheServer, WhatWasAskedAheadIsTakenOnce) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    ASSERT_TRUE(waitForRunning(a));
    askAhead();
    askAhead();
    EXPECT_EQ(isMinimized(running(a)), false);
    setHidden(windows[0], true);
    EXPECT_EQ(isMinimized(running(a)), true);
}

TEST_F(WindowStateOnTheServer, WhatWasAskedTooLateIsTakenByNoLaterPress) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const xcb_window_t window = make("Aaa", 1)[0];
    make("Bbb", 1);
    ASSERT_TRUE(waitForRunning(a));
    workspace().pressBegins();
    EXPECT_FALSE(running(a)->isActive());
    workspace().askAhead();
    maker_->activate(window);
    ASSERT_TRUE(waitUntil([&] { return maker_->active() == window; }));
    EXPECT_TRUE(running(a)->isActive());
}

TEST_F(WindowStateOnTheServer, WhatWasAskedLongAgoIsAskedAgain) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    ASSERT_TRUE(waitForRunning(a));
    askAhead();
    const auto asked = std::chrono::steady_clock::now();
    setHidden(windows[0], true);
    ASSERT_TRUE(waitUntil([&] { return std::chrono::steady_clock::now() - asked > 100ms; }));
    EXPECT_EQ(isMinimized(running(a)), true);
}

TEST_F(WindowStateOnTheServer, FollowsTheWorkspaceInView) {
    const QString a = entry("Aaa");
    startWindowManager();
    startWorkspace();
    const auto windows = make("Aaa", 1);
    Application application = waitForRunning(a);
    ASSERT_TRUE(application);
    static_cast<void>(application->windows());
    const std::uint32_t here = maker_->words(windows[0], "_NET_WM_DESKTOP").at(0);
    maker_->moveToWorkspace(windows[0], here + 1);
    ASSERT_TRUE(
        waitUntil([&] { return maker_->words(windows[0], "_NET_WM_DESKTOP").at(0) == here + 1; }));
    application = running(a);
    ASSERT_TRUE(application);
    // Only by its workspace being shown first does openbox activate it.
    EXPECT_TRUE(application->activate());
    EXPECT_TRUE(becomesActive(a));
    EXPECT_EQ(maker_->words(maker_->connection().root(), "_NET_CURRENT_DESKTOP").at(0), here + 1);
}

}  // namespace
}  // namespace kestrelbay::testing
