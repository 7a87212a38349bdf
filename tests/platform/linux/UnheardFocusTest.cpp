#include <bit>

#include "appsWindows.h"

namespace kestrelbay::testing {
namespace {

/// NormalState of ICCCM 4.1.3.1.
constexpr std::uint32_t kNormal = 1;

QByteArray bytesOf(std::initializer_list<std::uint32_t> words) {
    QByteArray bytes;
    for (const std::uint32_t word : words)
        bytes.append(std::bit_cast<std::array<char, 4>>(word).data(), sizeof word);
    return bytes;
}

/// The test is the window manager itself, one that leaves requests unheard.
class UnheardFocus : public LinuxWorkspaceWindows {
protected:
    void SetUp() override {
        LinuxWorkspaceWindows::SetUp();
        entry_ = entry("Aaa");
        target_ = maker_->make({.className = "Aaa"});
        other_ = maker_->make({.className = "Bbb"});
        manage(target_, other_);
        startWorkspace();
        application_ = waitForRunning(entry_);
        ASSERT_TRUE(application_);
    }

    void manage(xcb_window_t target, xcb_window_t other) {
        const xcb_window_t root = maker_->connection().root();
        const xcb_window_t check = maker_->make({.unmapped = true});
        for (const xcb_window_t announced : {check, root})
            setWindows(announced, "_NET_SUPPORTING_WM_CHECK", bytesOf({check}));
        for (const xcb_window_t window : {target, other})
            maker_->setRaw(window, "WM_STATE", "WM_STATE", 32, bytesOf({kNormal, XCB_NONE}));
        setWindows(root, "_NET_CLIENT_LIST_STACKING", bytesOf({target, other}));
        setWindows(root, "_NET_ACTIVE_WINDOW", bytesOf({other}));
        maker_->listen();
    }

    /// So many more requests for the focus have come, all for the target.
    [[nodiscard]] bool isAskedFor(xcb_window_t target, int requests) {
        return waitUntil(
            [&] {
                for (const WindowMaker::Message &message : maker_->heard()) {
                    if (message.type != maker_->atom("_NET_ACTIVE_WINDOW"))
                        continue;
                    EXPECT_EQ(message.window, target);
                    --requests;
                }
                return requests <= 0;
            },
            std::chrono::seconds(1));
    }

    void makeActive(xcb_window_t window) {
        setWindows(maker_->connection().root(), "_NET_ACTIVE_WINDOW", bytesOf({window}));
    }

    QString entry_;
    xcb_window_t target_ = XCB_NONE;
    xcb_window_t other_ = XCB_NONE;
    Application application_;

private:
    void setWindows(xcb_window_t window, const char *property, const QByteArray &words) {
        maker_->setRaw(window, property, "WINDOW", 32, words);
    }
};

TEST_F(UnheardFocus, IsAskedForAgain) {
    // A request is soon too old to be repeated, which a busy machine may be too late for.
    EXPECT_TRUE(waitUntil([&] { return application_->activate() && isAskedFor(target_, 2); }));
    makeActive(target_);
    EXPECT_TRUE(becomesActive(entry_));
}

TEST_F(UnheardFocus, IsAskedForAgainOfAManagerThatHasRefused) {
    EXPECT_TRUE(waitUntil([&] {
        if (!application_->activate() || !isAskedFor(target_, 1))
            return false;
        // Late with what came before, it refuses, and marks the window.
        makeActive(other_);
        maker_->setRaw(target_, "_NET_WM_STATE", "ATOM", 32,
                       bytesOf({maker_->atom("_NET_WM_STATE_DEMANDS_ATTENTION")}));
        return isAskedFor(target_, 1);
    }));
    makeActive(target_);
    EXPECT_TRUE(becomesActive(entry_));
}

}  // namespace
}  // namespace kestrelbay::testing
