#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "platform/linux/applications/matching/ApplicationLook.h"
#include "platform/linux/apps/windows.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

constexpr xcb_window_t kOurs = 1;
constexpr xcb_window_t kOurOther = 2;
constexpr xcb_window_t kAnothers = 3;
constexpr xcb_window_t kAThirds = 4;

const ApplicationLook kBefore{
    .windows = {{.window = kOurs, .title = "a"}, {.window = kOurOther, .title = "b"}},
    .active = kAnothers};

TEST(OpenedFileChange, AWindowThatIsNewOrAnotherOrWantsSomething) {
    EXPECT_EQ(changedWindow(kBefore, kBefore), std::nullopt);
    ApplicationLook now = kBefore;
    now.windows[1].title = "c";
    EXPECT_EQ(changedWindow(kBefore, now), kOurOther);
    ApplicationLook urgent = kBefore;
    urgent.windows[1].wantsAttention = true;
    EXPECT_EQ(changedWindow(kBefore, urgent), kOurOther);
    const ApplicationLook calm = kBefore;
    EXPECT_EQ(changedWindow(urgent, calm), std::nullopt);
    now = kBefore;
    now.windows.push_back({.window = 9, .title = {}});
    EXPECT_EQ(changedWindow(kBefore, now), 9U);
    now = kBefore;
    now.active = kOurOther;
    EXPECT_EQ(changedWindow(kBefore, now), kOurOther);
    now = kBefore;
    now.windows.pop_back();
    std::ranges::reverse(now.windows);
    EXPECT_EQ(changedWindow(kBefore, now), std::nullopt);
}

TEST(OpenedFileChange, TheUserIsElsewhereInAnotherProgramsWindow) {
    ApplicationLook now = kBefore;
    EXPECT_FALSE(isElsewhere(kBefore, now));
    now.active = kAThirds;
    EXPECT_TRUE(isElsewhere(kBefore, now));
    now.active = XCB_NONE;
    EXPECT_FALSE(isElsewhere(kBefore, now));
    now.active = kOurs;
    EXPECT_FALSE(isElsewhere(kBefore, now));
}

/// "Aaa" runs and has two windows behind one of "Bbb". Its entry starts a program that does
/// nothing: what becomes of the file is up to the test.
class OpenedFile : public LinuxWorkspaceWindows,
                   public ::testing::WithParamInterface<const char *> {
protected:
    /// For a program that does nothing.
    static constexpr auto kSoon = 1ms;
    /// For one that the test lets do something.
    static constexpr auto kLate = 10min;
    /// Far longer than what should not happen would take.
    static constexpr auto kAMoment = 500ms;

    void prepare(std::chrono::milliseconds openingTakes) {
        entry_ = entry("Aaa");
        startWindowManager(QLatin1String(GetParam()));
        workspace_ = makeWorkspaceOfX(server_->displayName(), log_, openingTakes);
        windows_ = {makeActive("Aaa"), makeActive("Aaa")};
        other_ = makeActive("Bbb");
        ASSERT_TRUE(waitForRunning(entry_, 2));
    }
    xcb_window_t makeActive(const char *className) {
        const xcb_window_t window = make(className, 1).front();
        EXPECT_TRUE(waitUntil([&] { return maker_->active() == window && hasFocus(window); }));
        return window;
    }
    void openFile() {
        ASSERT_TRUE(workspace().openFiles({QUrl(QStringLiteral("file:///etc/hosts"))},
                                          QUrl::fromLocalFile(entry_)));
    }
    bool hasFocus(xcb_window_t window) {
        xcb_connection_t *const c = maker_->connection().get();
        const x11::Reply<xcb_get_input_focus_reply_t> focus(
            xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
        return focus && focus->focus == window;
    }
    bool comesForward(xcb_window_t window) {
        return waitUntil([&] { return maker_->active() == window && !maker_->isIconic(window); });
    }
    std::uint32_t workspaceInView() {
        return maker_->words(maker_->connection().root(), "_NET_CURRENT_DESKTOP").at(0);
    }

    QString entry_;
    /// The last one is nearer to the front.
    std::vector<xcb_window_t> windows_;
    xcb_window_t other_ = XCB_NONE;
};

TEST_P(OpenedFile, TheFrontOneComesForwardWhenNothingHappens) {
    prepare(kSoon);
    openFile();
    EXPECT_TRUE(comesForward(windows_[1]));
}

TEST_P(OpenedFile, AMinimisedOneComesBack) {
    prepare(kSoon);
    EXPECT_TRUE(running(entry_)->hide());
    ASSERT_TRUE(
        waitUntil([&] { return maker_->isIconic(windows_[0]) && maker_->isIconic(windows_[1]); }));
    openFile();
    EXPECT_TRUE(waitUntil([&] {
        return maker_->active() != other_ &&
               !(maker_->isIconic(windows_[0]) && maker_->isIconic(windows_[1]));
    }));
}

TEST_P(OpenedFile, TheOneWithANewTitleComesForward) {
    prepare(kLate);
    openFile();
    maker_->setText(windows_[0], "WM_NAME", "hosts");
    EXPECT_TRUE(comesForward(windows_[0]));
}

TEST_P(OpenedFile, TheOneThatWantsAttentionComesForward) {
    prepare(kLate);
    openFile();
    const std::array<std::uint32_t, 9> urgent{1U << 8U};
    maker_->setRaw(windows_[0], "WM_HINTS", "WM_HINTS", 32,
                   QByteArray(reinterpret_cast<const char *>(urgent.data()), sizeof urgent));
    EXPECT_TRUE(comesForward(windows_[0]));
}

TEST_P(OpenedFile, ANewOneComesForward) {
    prepare(kLate);
    openFile();
    EXPECT_TRUE(comesForward(maker_->make({.className = "Aaa"})));
}

TEST_P(OpenedFile, ItsWorkspaceComesIntoView) {
    prepare(kSoon);
    const std::uint32_t there = workspaceInView() + 1;
    for (const xcb_window_t window : windows_) {
        maker_->moveToWorkspace(window, there);
        ASSERT_TRUE(waitUntil(
            [&] { return maker_->words(window, "_NET_WM_DESKTOP") == std::vector{there}; }));
    }
    openFile();
    EXPECT_TRUE(waitUntil([&] { return workspaceInView() == there; }));
    EXPECT_TRUE(comesForward(windows_[1]));
}

TEST_P(OpenedFile, NothingIsTakenFromAUserWhoIsElsewhere) {
    prepare(kLate);
    // Which is in front of the other one when the file is opened.
    makeActive("Ccc");
    openFile();
    maker_->activate(other_);
    ASSERT_TRUE(comesForward(other_));
    maker_->setText(windows_[0], "WM_NAME", "hosts");
    EXPECT_FALSE(waitUntil([&] { return maker_->active() != other_; }, kAMoment));
}

TEST_P(OpenedFile, NothingIsTakenFromTheNextPress) {
    prepare(kLate);
    openFile();
    static_cast<void>(workspace().runningApplications());
    maker_->setText(windows_[0], "WM_NAME", "hosts");
    EXPECT_FALSE(waitUntil([&] { return maker_->active() != other_; }, kAMoment));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, OpenedFile,
                         ::testing::Values("openbox", "metacity", "icewm", "mutter"));

}  // namespace
}  // namespace kestrelbay::testing
