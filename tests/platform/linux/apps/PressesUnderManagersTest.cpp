#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"
#include "platform/linux/apps/windows.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

/// Those of script/test, or those that the environment names instead.
std::vector<std::string> managers() {
    std::istringstream names(
        qEnvironmentVariable("KESTRELBAY_WINDOW_MANAGERS",
                             QStringLiteral("openbox xfwm4 metacity mutter icewm fluxbox i3"))
            .toStdString());
    return {std::istream_iterator<std::string>(names), {}};
}

/// What a press of a rule's hotkey does, from the decision to the window manager's deed.
class Presses : public LinuxWorkspaceWindows, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override {
        LinuxWorkspaceWindows::SetUp();
        entry_ = entry("Aaa");
        entry("Bbb");
        startWindowManager(QString::fromStdString(GetParam()));
        startWorkspace();
    }

    void press(RepeatAction action) {
        ShortcutRule rule;
        rule.appPath = entry_;
        rule.repeatAction = action;
        AppLauncher(workspace(), log_).handle(rule);
    }

    [[nodiscard]] bool becomesFront(xcb_window_t window) {
        return waitUntil([&] { return maker_->active() == window && maker_->isInView(window); });
    }

    [[nodiscard]] bool comeIntoView(const std::vector<xcb_window_t> &windows, bool inView = true) {
        return waitUntil([&] {
            return std::ranges::all_of(
                windows, [&](xcb_window_t window) { return maker_->isInView(window) == inView; });
        });
    }

    /// The last of them in front of the others.
    std::vector<xcb_window_t> opened(int count) {
        auto windows = make("Aaa", count);
        EXPECT_TRUE(waitForRunning(entry_, static_cast<std::size_t>(count)));
        EXPECT_TRUE(becomesActive(entry_));
        return windows;
    }

    /// Tiling ones leave every window where it is.
    [[nodiscard]] static bool minimises() { return GetParam() != "i3"; }

    QString entry_;
};

TEST_P(Presses, HideAllAndBringAllBackInTheirOrder) {
    const xcb_window_t other = make("Bbb", 1)[0];
    const auto windows = opened(3);
    // Front to back 0 2 1.
    maker_->activate(windows[0]);
    ASSERT_TRUE(becomesFront(windows[0]));
    for (int round = 0; round < 3; ++round) {
        press(RepeatAction::ToggleVisibility);
        EXPECT_TRUE(comeIntoView(windows, !minimises()));
        EXPECT_TRUE(minimises() || becomesFront(other));
        EXPECT_TRUE(waitUntil([&] { return !running(entry_)->isActive(); }));
        press(RepeatAction::ToggleVisibility);
        EXPECT_TRUE(comeIntoView(windows));
        EXPECT_TRUE(becomesFront(windows[0]));
    }
    for (const std::size_t next : {1U, 2U, 0U}) {
        press(RepeatAction::CycleWindows);
        EXPECT_TRUE(becomesFront(windows[next])) << next;
    }
}

TEST_P(Presses, BringAllBackOfAProgramThatTellsOfItsUse) {
    make("Bbb", 1);
    const ChildProcess program(QString::fromLocal8Bit(clientProgram()),
                               {QStringLiteral("--windows=3"), QStringLiteral("--class=Aaa")},
                               server_->environment());
    ASSERT_TRUE(waitForRunning(entry_, 3));
    const auto minimised = [&](bool value) {
        return waitUntil([&] {
            const Application application = running(entry_);
            const auto windows = application->windows();
            return std::ranges::all_of(
                windows, [&](const auto &window) { return window->isMinimized() == value; });
        });
    };
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(becomesActive(entry_));
        press(RepeatAction::ToggleVisibility);
        EXPECT_TRUE(minimised(minimises()));
        EXPECT_TRUE(waitUntil([&] { return !running(entry_)->isActive(); }));
        press(RepeatAction::ToggleVisibility);
        EXPECT_TRUE(minimised(false));
    }
}

TEST_P(Presses, CycleThroughAllWindows) {
    const auto windows = opened(4);
    for (const std::size_t next : {0U, 1U, 2U, 3U, 0U}) {
        press(RepeatAction::CycleWindows);
        EXPECT_TRUE(becomesFront(windows[next])) << next;
    }
}

TEST_P(Presses, CycleByUseWhileWindowsComeAndGo) {
    const auto windows = opened(4);
    const xcb_window_t other = make("Bbb", 1)[0];
    for (const std::size_t used : {2U, 0U, 3U}) {
        maker_->activate(windows[used]);
        ASSERT_TRUE(becomesFront(windows[used]));
        // Between two presses only the window manager tells of it.
        ASSERT_TRUE(waitUntil([&] { return running(entry_)->isActive(); }));
    }
    // Front to back 3 0 2 1; the press on another application's window changes nothing here.
    maker_->activate(other);
    ASSERT_TRUE(becomesFront(other));
    press(RepeatAction::CycleWindows);
    ASSERT_TRUE(becomesFront(windows[3]));
    maker_->destroy(windows[1]);
    ASSERT_TRUE(waitUntil([&] { return running(entry_)->windows().size() == 3; }));
    press(RepeatAction::CycleWindows);
    EXPECT_TRUE(becomesFront(windows[2]));
    const xcb_window_t later = make("Aaa", 1)[0];
    ASSERT_TRUE(waitForRunning(entry_, 4));
    // 4 2 3 0.
    for (const xcb_window_t next : {windows[0], windows[3], windows[2], later}) {
        press(RepeatAction::CycleWindows);
        EXPECT_TRUE(becomesFront(next)) << next;
    }
}

/// Three kinds of dialogs that a window manager may leave: of a window, of a group, and of a
/// window that is never shown.
TEST_P(Presses, HideDialogsAndBringThemBack) {
    const xcb_window_t other = make("Bbb", 1)[0];
    const xcb_window_t leader = maker_->make({.unmapped = true});
    const auto add = [&](xcb_window_t owner) {
        const xcb_window_t window = maker_->make(
            {.className = "Aaa",
             .type = owner ? "_NET_WM_WINDOW_TYPE_DIALOG" : "_NET_WM_WINDOW_TYPE_NORMAL",
             .transientFor = owner,
             .groupLeader = leader});
        EXPECT_TRUE(waitUntil([&] { return maker_->managed({window}); }));
        return window;
    };
    std::vector<xcb_window_t> windows{add(XCB_NONE)};
    for (const xcb_window_t owner : {windows[0], leader, maker_->connection().root()})
        windows.push_back(add(owner));
    ASSERT_TRUE(waitForRunning(entry_));
    for (int round = 0; round < 2; ++round) {
        maker_->activate(windows.back());
        ASSERT_TRUE(becomesFront(windows.back()));
        ASSERT_TRUE(becomesActive(entry_));
        press(RepeatAction::ToggleVisibility);
        EXPECT_TRUE(waitUntil([&] { return !running(entry_)->isActive(); }));
        // mutter minimises no dialog but with its window.
        if (minimises() && GetParam() != "mutter")
            EXPECT_TRUE(comeIntoView(windows, false));
        else
            EXPECT_TRUE(becomesFront(other));
        press(RepeatAction::ToggleVisibility);
        EXPECT_TRUE(comeIntoView(windows));
        EXPECT_TRUE(becomesActive(entry_));
    }
}

INSTANTIATE_TEST_SUITE_P(Managers, Presses, ::testing::ValuesIn(managers()),
                         [](const auto &program) { return program.param; });

}  // namespace
}  // namespace kestrelbay::testing
