#include "platform/linux/x11/keyboard/XEventTapFixture.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::waitUntil;

class XEventTapHeldKeysTest : public XEventTapFixture {};

TEST_F(XEventTapHeldKeysTest, TakesAHeldKeyAsOneKeyDown) {
    repeatKeysFast();
    install({Hotkey{KeyCode{96}, {}}});

    // A passed key repeats for the program in front, and is delivered once.
    verdict_ = EventVerdict::Pass;
    keys_->press(xkey::kF5);
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kF5) > 10; }));
    keys_->release(xkey::kF5);
    EXPECT_EQ(keyDowns_.size(), 1U);

    verdict_ = EventVerdict::Swallow;
    const auto before = pressesInFront(xkey::kF5);
    keys_->press(xkey::kF5);
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kF5);
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 2U);
    EXPECT_EQ(pressesInFront(xkey::kF5), before);

    keys_->chord({xkey::kF5});
    EXPECT_TRUE(cameKeyDowns(3));
}

TEST_F(XEventTapHeldKeysTest, SwallowsAHeldKeyThoughItsModifierIsLetGoFirst) {
    repeatKeysFast();
    ASSERT_TRUE(front_->grabKey(xkey::kT, kControlMask));
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    keys_->release(xkey::kLeftSuper);
    waitAsLongAsFortyRepeatsTake();
    keys_->press(xkey::kLeftControl);
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kLeftControl);
    keys_->release(xkey::kT);
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 1U);
    EXPECT_EQ(pressesInFront(xkey::kT), 0);

    // Let go, the key is anybody's again.
    keys_->chord({xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) == 1; }));
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(2));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 1);
}

TEST_F(XEventTapHeldKeysTest, SwallowsAHeldKeyThatAnotherProgramHasWithAnotherModifier) {
    repeatKeysFast();
    ASSERT_TRUE(front_->grabKeyByXInput(xkey::kT, kControlMask));
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    keys_->release(xkey::kLeftSuper);
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kT);
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 0);
    keys_->chord({xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) == 1; }));
}

TEST_F(XEventTapHeldKeysTest, TellsAFreshPressOfAHeldKeyFromItsRepeats) {
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    pressMarker();
    // Before the tap gets to know that the key is up.
    keys_->release(xkey::kT);
    keys_->chord({xkey::kT});
    ASSERT_TRUE(cameKeyDowns(2));
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(3));
    pressMarker();
    keys_->release(xkey::kT);
    keys_->release(xkey::kLeftSuper);
    keys_->chord({xkey::kT});
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kT) == 1; }));
    pressMarker();
    EXPECT_EQ(pressesInFront(xkey::kT), 1);
    EXPECT_EQ(keyDowns_.size(), 3U);
}

TEST_F(XEventTapHeldKeysTest, SwallowsARecordedKeyUntilItIsUp) {
    repeatKeysFast();
    install({});
    ASSERT_TRUE(tap_->setRecording(true));
    onKeyDown_ = [this] {
        EXPECT_TRUE(tap_->setRecording(false));
        return EventVerdict::Swallow;
    };
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kE);
    ASSERT_TRUE(cameKeyDowns(1));
    waitAsLongAsFortyRepeatsTake();
    keys_->release(xkey::kE);
    keys_->release(xkey::kLeftSuper);
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 1U);
    EXPECT_EQ(pressesInFront(xkey::kE), 0);
}

TEST_F(XEventTapHeldKeysTest, LetsOtherKeysThroughWhileAHotkeyIsHeld) {
    repeatKeysFast();
    install({kLeftCommandT, kLeftCommandE});
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    keys_->press(xkey::kE);
    ASSERT_TRUE(cameKeyDowns(2));
    keys_->release(xkey::kLeftSuper);
    waitAsLongAsFortyRepeatsTake();
    for (int i = 0; i < 20; ++i)
        keys_->chord({xkey::kA});
    keys_->release(xkey::kE);
    keys_->release(xkey::kT);
    EXPECT_TRUE(waitUntil([&] { return pressesInFront(xkey::kA) == 20; }));
    EXPECT_EQ(pressesInFront(xkey::kT) + pressesInFront(xkey::kE), 0);
    EXPECT_EQ(keyDowns_.size(), 2U);
}

TEST_F(XEventTapHeldKeysTest, GivesTheKeyboardBackWhileTheKeyIsStillDown) {
    install();
    keys_->press(xkey::kLeftSuper);
    keys_->press(xkey::kT);
    ASSERT_TRUE(cameKeyDowns(1));
    EXPECT_TRUE(waitUntil([&] { return front_->grabKeyboard(); }));
    front_->ungrabKeyboard();
}

}  // namespace
}  // namespace kestrelbay::x11
