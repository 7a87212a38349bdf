#include "platform/linux/wayland/sway/SwayBinding.h"

#include <array>

#include <gtest/gtest.h>

namespace kestrelbay::sway {
namespace {

constexpr KeyCode kT{17};
constexpr std::array kPositions{Position{64, 28}, Position{kShift | 4U | 8U, 67}};

TEST(SwayBinding, IsAtThePositionOfTheKey) {
    EXPECT_EQ(positionOf({kT, modifier::kCommand}), (Position{64, 28}));
    EXPECT_EQ(positionOf({KeyCode{122}, modifier::kShift | modifier::kControl | modifier::kOption}),
              kPositions[1]);
    EXPECT_EQ(positionOf({kT, {}}), (Position{0, 28}));
    EXPECT_FALSE(positionOf({KeyCode{500}, modifier::kCommand}));
}

TEST(SwayBinding, IsWrittenForSway) {
    EXPECT_EQ(bindCommands(kPositions),
              "bindcode --inhibited --no-repeat Mod4+28 nop kestrelbay Mod4+28; "
              "bindcode --inhibited --no-repeat Shift+Control+Mod1+67 "
              "nop kestrelbay Shift+Control+Mod1+67");
    EXPECT_EQ(unbindCommands(kPositions),
              "unbindcode --inhibited Mod4+28; unbindcode --inhibited Shift+Control+Mod1+67");
    EXPECT_EQ(bindCommands({}), "");
    EXPECT_EQ(toText({0, 71}), "71");
}

TEST(SwayBinding, GoesToTheDefaultMode) {
    EXPECT_EQ(inDefaultMode("a", "default"), "a");
    EXPECT_EQ(inDefaultMode("a", "resize it"), R"(mode "default"; a; mode "resize it")");
    EXPECT_EQ(inDefaultMode("a", R"(it's)"), R"(mode "default"; a; mode "it's")");
    EXPECT_EQ(inDefaultMode("a", R"("so" \)"), R"(mode "default"; a; mode '"so" \')");
    EXPECT_EQ(inDefaultMode("a", "<b>x</b>"), R"(mode "default"; a; mode "<b>x</b>")");
}

TEST(SwayBinding, KnowsModifiersByAllTheirNames) {
    EXPECT_EQ(modifierNamed("mod4"), Modifiers{64});
    EXPECT_EQ(modifierNamed("CTRL"), modifierNamed("Control"));
    EXPECT_EQ(modifierNamed("Alt"), modifierNamed("Mod1"));
    EXPECT_FALSE(modifierNamed("t"));
    EXPECT_FALSE(modifierNamed(""));
}

}  // namespace
}  // namespace kestrelbay::sway
