#include "platform/macos/desktop/MacReopening.h"

#include <optional>

#include <gtest/gtest.h>

#include "fakes/AppleEvents.h"

namespace kestrelbay::macos {
namespace {

class MacReopeningTest : public ::testing::Test {
protected:
    MacReopeningTest() {
        reopening_->setHandler([this] { ++times_; });
    }

    static bool open() { return sendAppleEvent('aevt', 'rapp'); }

    std::optional<MacReopening> reopening_{std::in_place};
    int times_ = 0;
};

TEST_F(MacReopeningTest, TellsEachTimeThoughAppKitHasAHandlerOfItsOwn) {
    beginLaunching();
    EXPECT_EQ(times_, 0) << "that is the first start";
    EXPECT_TRUE(open());
    EXPECT_TRUE(open());
    EXPECT_EQ(times_, 2);
}

TEST_F(MacReopeningTest, OtherEventsAreAppKits) {
    beginLaunching();
    EXPECT_FALSE(sendAppleEvent('aevt', 'oapp'));
    EXPECT_FALSE(sendAppleEvent('aevt', 'quit'));
    EXPECT_EQ(times_, 0);
}

TEST_F(MacReopeningTest, TellsNobodyOnceTheHandlerIsTakenBack) {
    beginLaunching();
    reopening_->setHandler({});
    EXPECT_TRUE(open());
    EXPECT_EQ(times_, 0);
}

TEST_F(MacReopeningTest, IsNotCalledWhenItIsGone) {
    beginLaunching();
    reopening_.reset();
    EXPECT_FALSE(open());
    reopening_.emplace();
    reopening_.reset();
    beginLaunching();
    EXPECT_FALSE(open());
}

}  // namespace
}  // namespace kestrelbay::macos
