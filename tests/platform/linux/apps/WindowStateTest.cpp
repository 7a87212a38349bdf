#include <array>
#include <bit>

#include "platform/linux/apps/windows.h"

namespace kestrelbay::testing {
namespace {

class WindowStateOnTheServer : public LinuxWorkspaceWindows {
protected:
    void SetUp() override {
        LinuxWorkspaceWindows::SetUp();
        entry_ = entry("Aaa");
        startWindowManager();
        startWorkspace();
        window_ = make("Aaa", 1)[0];
        ASSERT_TRUE(waitForRunning(entry_));
    }

    void setHidden(xcb_window_t window, bool hidden) {
        const auto state = std::bit_cast<std::array<char, 4>>(maker_->atom("_NET_WM_STATE_HIDDEN"));
        maker_->setRaw(window, "_NET_WM_STATE", "ATOM", 32,
                       hidden ? QByteArray(state.data(), state.size()) : QByteArray());
    }
    [[nodiscard]] static std::optional<bool> isMinimized(const Application &application) {
        const auto windows = application->windows();
        return windows.empty() ? std::nullopt : windows[0]->isMinimized();
    }

    QString entry_;
    xcb_window_t window_ = XCB_NONE;
};

TEST_F(WindowStateOnTheServer, IsSeenAsOfThePress) {
    // Without any waiting: what the server was told before the question counts.
    for (int i = 0; i < 50; ++i) {
        for (const bool hidden : {true, false}) {
            setHidden(window_, hidden);
            if (i % 2 == 1)
                workspace().askAhead();
            const Application application = running(entry_);
            ASSERT_TRUE(application);
            EXPECT_EQ(isMinimized(application), hidden) << i;
        }
    }
}

TEST_F(WindowStateOnTheServer, WhatWasAskedAheadIsTakenOnce) {
    workspace().askAhead();
    workspace().askAhead();
    EXPECT_EQ(isMinimized(running(entry_)), false);
    setHidden(window_, true);
    EXPECT_EQ(isMinimized(running(entry_)), true);
}

TEST_F(WindowStateOnTheServer, WhatWasAskedLongAgoIsAskedAgain) {
    workspace().askAhead();
    const auto asked = std::chrono::steady_clock::now();
    setHidden(window_, true);
    ASSERT_TRUE(waitUntil([&] { return std::chrono::steady_clock::now() - asked > 100ms; }));
    EXPECT_EQ(isMinimized(running(entry_)), true);
}

TEST_F(WindowStateOnTheServer, FollowsTheWorkspaceInView) {
    Application application = running(entry_);
    ASSERT_TRUE(application);
    static_cast<void>(application->windows());
    const std::uint32_t here = maker_->words(window_, "_NET_WM_DESKTOP").at(0);
    maker_->moveToWorkspace(window_, here + 1);
    ASSERT_TRUE(
        waitUntil([&] { return maker_->words(window_, "_NET_WM_DESKTOP").at(0) == here + 1; }));
    application = running(entry_);
    ASSERT_TRUE(application);
    // Only by its workspace being shown first does openbox activate it.
    EXPECT_TRUE(application->activate());
    EXPECT_TRUE(becomesActive(entry_));
    EXPECT_EQ(maker_->words(maker_->connection().root(), "_NET_CURRENT_DESKTOP").at(0), here + 1);
}

}  // namespace
}  // namespace kestrelbay::testing
