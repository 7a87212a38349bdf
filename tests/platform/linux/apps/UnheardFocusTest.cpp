#include "platform/linux/apps/ownManager.h"

namespace kestrelbay::testing {
namespace {

/// A window manager that leaves requests unheard.
class UnheardFocus : public OwnManager {
protected:
    void SetUp() override {
        OwnManager::SetUp();
        entry_ = entry("Aaa");
        target_ = maker_->make({.className = "Aaa"});
        other_ = maker_->make({.className = "Bbb"});
        manage({target_, other_});
        maker_->listen();
        startWorkspace();
        application_ = waitForRunning(entry_);
        ASSERT_TRUE(application_);
    }

    /// So many more requests for the focus of the window have come, and none for the other
    /// program's.
    [[nodiscard]] bool isAskedFor(xcb_window_t window, int requests) {
        return waitUntil(
            [&] {
                for (const WindowMaker::Message &message : maker_->heard()) {
                    if (message.type != maker_->atom("_NET_ACTIVE_WINDOW"))
                        continue;
                    EXPECT_NE(message.window, other_);
                    requests -= message.window == window ? 1 : 0;
                }
                return requests <= 0;
            },
            std::chrono::seconds(1));
    }

    QString entry_;
    xcb_window_t target_ = XCB_NONE;
    xcb_window_t other_ = XCB_NONE;
    Application application_;
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

TEST_F(UnheardFocus, BringsBackWhatWasRefusedOnTheWay) {
    const xcb_window_t first = maker_->make({.className = "Aaa"});
    manage({first, target_, other_});
    EXPECT_TRUE(waitUntil([&] {
        for (const xcb_window_t window : {first, target_})
            setState(window, kMinimised);
        makeActive(other_);
        application_ = running(entry_);
        const auto windows = application_->windows();
        if (windows.size() != 2)
            return false;
        for (const auto &window : windows)
            window->setMinimized(false);
        if (!application_->activate() || !isAskedFor(target_, 2))
            return false;
        // Used as soon as it was back, it has made the request for the first one too old.
        setState(target_, kNormal);
        makeActive(target_);
        return isAskedFor(first, 1) && isAskedFor(target_, 1);
    }));
}

}  // namespace
}  // namespace kestrelbay::testing
