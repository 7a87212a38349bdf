#include "platform/linux/wayland/sway/windows/SwayDesktopFixture.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace kestrelbay::sway {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using SwayDesktopTest = SwayDesktopFixture;

TEST_F(SwayDesktopTest, AsksNothingMoreForAPressThatWasAnnounced) {
    show({workspace("1", {window(4, "a", true)})});
    desktop_->askAhead();
    desktop_->askAhead();
    ASSERT_TRUE(application(u"/apps/a.desktop"_s));
    EXPECT_EQ(treesAsked(), 1);
}

TEST_F(SwayDesktopTest, TakesNoOldAnswerForANewOne) {
    show({workspace("1", {window(4, "a", true)})});
    desktop_->askAhead();
    while (treesAsked() == 0) {
    }
    show({workspace("1", {window(5, "a", true)})});
    EXPECT_THAT(order(), ElementsAre(5));
}

TEST_F(SwayDesktopTest, ComesForwardByOneCommand) {
    show({workspace("1", {window(4, "a"), window(5, "b", true), window(6, "a")})});
    const auto found = application(u"/apps/a.desktop"_s);
    ASSERT_TRUE(found);
    EXPECT_FALSE(found->isActive());
    EXPECT_EQ(found->windows().size(), 2U);
    EXPECT_TRUE(found->activate());
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=4] focus"));
}

TEST_F(SwayDesktopTest, CyclesByOneCommand) {
    show({workspace("1", {window(4, "a", true), window(6, "a")})});
    const auto found = application(u"/apps/a.desktop"_s);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isActive());
    const auto windows = found->windows();
    windows.back()->setMain();
    windows.back()->setFocused();
    found->activate();
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=6] focus"));
}

TEST_F(SwayDesktopTest, HidesInTheScratchpadAndComesBackToItsPlace) {
    show({workspace("1", {window(4, "a", true)}), workspace(R"(2: \"web\")", {window(6, "a")})});
    ASSERT_TRUE(application(u"/apps/a.desktop"_s)->hide());
    EXPECT_THAT(takeCommands(),
                ElementsAre("[con_id=6] move scratchpad; [con_id=4] move scratchpad; "));

    show({workspace("__i3_scratch", {window(4, "a"), window(6, "a")}), workspace("3", {})});
    {
        const auto found = application(u"/apps/a.desktop"_s);
        EXPECT_FALSE(found->isActive());
        for (const auto &element : found->windows()) {
            EXPECT_EQ(element->isMinimized(), true);
            element->setMinimized(false);
        }
        EXPECT_THAT(takeCommands(), IsEmpty());
        found->activate();
    }
    EXPECT_THAT(
        takeCommands(),
        ElementsAre("[con_id=6] move --no-auto-back-and-forth container to workspace "
                    "\"2: \\\"web\\\"\"; [con_id=6] floating disable; "
                    "[con_id=4] move --no-auto-back-and-forth container to workspace \"1\"; "
                    "[con_id=4] floating disable; [con_id=4] focus"));
}

TEST_F(SwayDesktopTest, ShowsWhatOthersHaveHidden) {
    show({workspace("__i3_scratch", {window(4, "a")})});
    ASSERT_TRUE(application(u"/apps/a.desktop"_s)->activate());
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=4] scratchpad show; [con_id=4] focus"));
}

TEST_F(SwayDesktopTest, ForgetsThePlaceOfWhatOthersHaveBroughtBack) {
    show({workspace("1", {window(4, "a", true)})});
    application(u"/apps/a.desktop"_s)->hide();
    show({workspace("2", {window(4, "a", true)})});
    EXPECT_THAT(order(), ElementsAre(4));
    show({workspace("__i3_scratch", {window(4, "a")})});
    static_cast<void>(takeCommands());
    application(u"/apps/a.desktop"_s)->activate();
    EXPECT_THAT(takeCommands(), ElementsAre("[con_id=4] scratchpad show; [con_id=4] focus"));
}

TEST_F(SwayDesktopTest, WithoutSwayHasNoWindows) {
    SwayDesktop nowhere(std::make_shared<SwayEvents>(u"/nowhere/ipc.sock"_s));
    nowhere.askAhead();
    EXPECT_THAT(nowhere.readAsked(), IsEmpty());
    EXPECT_FALSE(nowhere.bringForward({}, 1));
}

}  // namespace
}  // namespace kestrelbay::sway
