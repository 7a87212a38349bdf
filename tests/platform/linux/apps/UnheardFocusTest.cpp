#include <bit>

#include "platform/linux/apps/windows.h"

namespace kestrelbay::testing {
namespace {

/// NormalState of ICCCM 4.1.3.1.
constexpr std::uint32_t kNormal = 1;
/// IconicState.
constexpr std::uint32_t kMinimised = 3;

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
        manage({target_, other_});
        startWorkspace();
        application_ = waitForRunning(entry_);
        ASSERT_TRUE(application_);
    }

    /// The last of them is in front and active.
    void manage(std::initializer_list<xcb_window_t> windows) {
        const xcb_window_t root = maker_->connection().root();
        const xcb_window_t check = maker_->make({.unmapped = true});
        for (const xcb_window_t announced : {check, root})
            setWindows(announced, "_NET_SUPPORTING_WM_CHECK", bytesOf({check}));
        for (const xcb_window_t window : windows)
            setState(window, kNormal);
        setWindows(root, "_NET_CLIENT_LIST_STACKING", bytesOf(windows));
        makeActive(std::data(windows)[windows.size() - 1]);
        maker_->listen();
    }

    void setState(xcb_window_t window, std::uint32_t state) {
        maker_->setRaw(window, "WM_STATE", "WM_STATE", 32, bytesOf({state, XCB_NONE}));
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
