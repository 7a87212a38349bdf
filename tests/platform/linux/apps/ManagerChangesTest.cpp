#include <optional>

#include "platform/linux/apps/ownManager.h"

namespace kestrelbay::testing {
namespace {

/// A window manager that tells something else of itself after it has been asked.
class ManagerChanges : public OwnManager {
protected:
    void SetUp() override {
        OwnManager::SetUp();
        entry_ = entry("Aaa");
        window_ = maker_->make({.className = "Aaa"});
        other_ = maker_->make({.className = "Bbb"});
        manage({other_, window_});
        startWorkspace();
        ASSERT_TRUE(waitForRunning(entry_));
        // That was the first time; from now on some of it is known.
        makeActive(other_);
        ASSERT_TRUE(waitForRunning(entry_));
    }

    [[nodiscard]] bool isKnown() { return running(entry_) != nullptr; }
    [[nodiscard]] std::optional<bool> isMinimised() {
        const Application application = running(entry_);
        return application ? application->windows().front()->isMinimized() : std::nullopt;
    }

    QString entry_;
    xcb_window_t window_ = XCB_NONE;
    xcb_window_t other_ = XCB_NONE;
};

TEST_F(ManagerChanges, WindowsMayBeListedInAnotherOrder) {
    setWindows(root(), "_NET_CLIENT_LIST", {window_, other_});
    setWindows(root(), "_NET_CLIENT_LIST_STACKING", {});
    EXPECT_TRUE(isKnown());
    setWindows(root(), "_NET_CLIENT_LIST", {other_});
    EXPECT_FALSE(isKnown());
    setWindows(root(), "_NET_CLIENT_LIST_STACKING", {other_, window_});
    EXPECT_TRUE(isKnown());
}

TEST_F(ManagerChanges, OneThatHasGoneHasNoWindows) {
    setWindows(root(), "_NET_SUPPORTING_WM_CHECK", {maker_->make({.unmapped = true})});
    EXPECT_FALSE(isKnown());
    announce(maker_->make({.unmapped = true}));
    EXPECT_TRUE(isKnown());
}

TEST_F(ManagerChanges, AnotherOneMayMarkHiddenWindows) {
    maker_->setRaw(window_, "_NET_WM_STATE", "ATOM", 32,
                   bytesOf({maker_->atom("_NET_WM_STATE_HIDDEN")}));
    EXPECT_EQ(isMinimised(), false);
    maker_->setRaw(root(), "_NET_SUPPORTED", "ATOM", 32,
                   bytesOf({maker_->atom("_NET_WM_STATE_HIDDEN")}));
    EXPECT_EQ(isMinimised(), true);
}

}  // namespace
}  // namespace kestrelbay::testing
