#include "platform/linux/x11/keyboard/XEventTapFixture.h"

#include "support/KeyboardSettings.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::KeyboardSettings;
using kestrelbay::testing::waitUntil;
using ::testing::ElementsAre;

const Hotkey kLeftControlT{KeyCode{17}, ModifierFlags(0x40001)};
const Hotkey kRightOptionE{KeyCode{14}, ModifierFlags(0x80040)};
const Hotkey kOptionR{KeyCode{15}, modifier::kOption};

class XEventTapModifiersTest : public XEventTapFixture {};

TEST_F(XEventTapModifiersTest, TellsEveryModifierKeyApart) {
    install();
    for (const std::uint8_t code :
         {xkey::kLeftSuper, xkey::kRightSuper, xkey::kLeftShift, xkey::kRightShift, xkey::kLeftAlt,
          xkey::kRightAlt, xkey::kLeftControl, xkey::kRightControl}) {
        keys_->press(code);
        EXPECT_TRUE(waitUntil([&] { return held_.size() == 1; })) << int{code};
        EXPECT_EQ(*held_.begin(), toKeyCode(code));
        keys_->release(code);
        EXPECT_TRUE(waitUntil([&] { return held_.empty(); })) << int{code};
    }
}

TEST_F(XEventTapModifiersTest, IgnoresTheLocks) {
    install();
    keys_->chord({xkey::kNumLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
    keys_->chord({xkey::kCapsLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(2));
    keys_->chord({xkey::kNumLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(3));
}

TEST_F(XEventTapModifiersTest, DeliversModifiersThatChangedWhileItWasAway) {
    keys_->press(xkey::kLeftSuper);
    install();
    EXPECT_THAT(held_, ElementsAre(key::kLeftCommand));
    tap_->remove();
    keys_->release(xkey::kLeftSuper);
    keys_->press(xkey::kRightShift);
    ASSERT_TRUE(waitUntil([&] { return tap_->install(handlers()); }));
    EXPECT_THAT(held_, ElementsAre(key::kRightShift));
}

TEST_F(XEventTapModifiersTest, FollowsAChangeOfTheKeyboardMapping) {
    install({kLeftCommandT, Hotkey{KeyCode{14}, ModifierFlags(0x80040)}});
    setLayout(QStringLiteral("de"), QStringLiteral("altwin:swap_lalt_lwin"));
    // The left Command position now sets Alt's modifier, right Option the third level's.
    ASSERT_TRUE(waitUntil([&] {
        keys_->chord({xkey::kLeftSuper, xkey::kT});
        return !keyDowns_.empty();
    }));
    keyDowns_.clear();
    keys_->chord({xkey::kRightAlt, xkey::kE});
    ASSERT_TRUE(
        waitUntil([&] { return !keyDowns_.empty() && keyDowns_.back().keyCode == KeyCode{14}; }));
    EXPECT_EQ(keyDowns_.back().modifierFlags, ModifierFlags(0x80040));
}

TEST_F(XEventTapModifiersTest, AnswersAPressBeforeItReadsAMappingThatChangesAllTheTime) {
    install();
    KeyboardSettings(server_->displayName()).changeMapping(200);
    setLayout(QStringLiteral("us"), QStringLiteral("altwin:swap_lalt_lwin"));
    // What the left Option position sets now is what the grab in force asks for.
    keys_->chord({xkey::kLeftAlt, xkey::kT});
    onKeyDown_ = [this] {
        EXPECT_TRUE(front_->grabKey(xkey::kT, kMod1Mask)) << "the mapping was read first";
        front_->ungrabKey(xkey::kT, kMod1Mask);
        return EventVerdict::Pass;
    };
    ASSERT_TRUE(cameKeyDowns(1));
    EXPECT_TRUE(waitUntil([&] {
        if (!front_->grabKey(xkey::kT, kMod1Mask))
            return true;
        front_->ungrabKey(xkey::kT, kMod1Mask);
        return false;
    }));
}

TEST_F(XEventTapModifiersTest, WorksInTheSecondLayoutGroup) {
    setLayout(QStringLiteral("us,ru"), QStringLiteral("grp:caps_toggle"));
    install();
    keys_->chord({xkey::kCapsLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapModifiersTest, HearsAKeyThatSetsAnotherModifierInTheSecondLayoutGroup) {
    setLayout(QStringLiteral("us,de"), QStringLiteral("grp:caps_toggle"));
    install({kRightOptionE, kOptionR});
    for (std::size_t seen = 0; seen < 8; seen += 4) {
        keys_->chord({xkey::kRightAlt, xkey::kE});
        ASSERT_TRUE(cameKeyDowns(seen + 1));
        keys_->chord({xkey::kRightAlt, xkey::kR});
        ASSERT_TRUE(cameKeyDowns(seen + 2));
        keys_->chord({xkey::kLeftAlt, xkey::kR});
        ASSERT_TRUE(cameKeyDowns(seen + 3));
        keys_->chord({xkey::kLeftAlt, xkey::kRightAlt, xkey::kR});
        ASSERT_TRUE(cameKeyDowns(seen + 4));
        keys_->chord({xkey::kCapsLock});
    }
    EXPECT_EQ(keyDowns_[0], kRightOptionE);
    EXPECT_EQ(keyDowns_[4], kRightOptionE);
}

TEST_F(XEventTapModifiersTest, IgnoresACapsLockThatShiftChooses) {
    setLayout(QStringLiteral("us"), QStringLiteral("caps:escape_shifted_capslock"));
    install();
    keys_->chord({xkey::kLeftShift, xkey::kCapsLock});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapModifiersTest, IgnoresACapsLockOfBothShiftKeys) {
    setLayout(QStringLiteral("us"), QStringLiteral("ctrl:nocaps,shift:both_capslock"));
    install();
    keys_->chord({xkey::kLeftShift, xkey::kRightShift});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapModifiersTest, IgnoresACapsLockThatNoKeySets) {
    setLayout(QStringLiteral("us"), QStringLiteral("caps:none"));
    install();
    KeyboardSettings(server_->displayName()).lock(kLockMask);
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    EXPECT_TRUE(cameKeyDowns(1));
}

TEST_F(XEventTapModifiersTest, TakesALatchedModifierForItsLeftKey) {
    install();
    KeyboardSettings settings(server_->displayName());
    settings.latch(kMod4Mask);
    keys_->chord({xkey::kT});
    ASSERT_TRUE(cameKeyDowns(1));
    EXPECT_EQ(keyDowns_[0], kLeftCommandT);
    EXPECT_TRUE(cameModifierReleases());
    pressMarker();
    EXPECT_THAT(front_->pressedKeys(), ElementsAre(xkey::kF6));
}

TEST_F(XEventTapModifiersTest, TakesALockedModifierForItsLeftKeyAsLongAsItIsLocked) {
    install({kLeftCommandT, Hotkey{KeyCode{17}, ModifierFlags(0x12000A)}});
    KeyboardSettings settings(server_->displayName());
    settings.lock(kMod4Mask);
    keys_->chord({xkey::kT});
    keys_->chord({xkey::kLeftShift, xkey::kT});
    keys_->chord({xkey::kLeftSuper, xkey::kT});
    ASSERT_TRUE(cameKeyDowns(3));
    EXPECT_THAT(keyDowns_, ElementsAre(kLeftCommandT, Hotkey{KeyCode{17}, ModifierFlags(0x12000A)},
                                       kLeftCommandT));
    settings.lock(0);
    keys_->chord({xkey::kT});
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 3U);
    EXPECT_TRUE(cameModifierReleases());
}

TEST_F(XEventTapModifiersTest, WorksWithStickyKeys) {
    install();
    KeyboardSettings(server_->displayName()).turnStickyKeysOn();
    for (std::size_t presses = 1; presses <= 2; ++presses) {
        keys_->chord({xkey::kLeftSuper});
        keys_->chord({xkey::kT});
        ASSERT_TRUE(cameKeyDowns(presses));
        EXPECT_EQ(keyDowns_.back(), kLeftCommandT);
    }
    keys_->chord({xkey::kT});
    pressMarker();
    EXPECT_EQ(keyDowns_.size(), 2U);
}

TEST_F(XEventTapModifiersTest, TakesCapsLockThatIsAControlKeyForTheLeftOne) {
    for (const QString &option : {QStringLiteral("ctrl:nocaps"), QStringLiteral("ctrl:swapcaps")}) {
        setLayout(QStringLiteral("us"), option);
        install({kLeftControlT});
        keys_->chord({xkey::kCapsLock, xkey::kT});
        ASSERT_TRUE(cameKeyDowns(1)) << option.toStdString();
        EXPECT_THAT(keyDowns_, ElementsAre(kLeftControlT));
        tap_->remove();
        keyDowns_.clear();
        run(QStringLiteral("setxkbmap"), {QStringLiteral("-option")});
        tap_ = makeTap();
    }
}

TEST_F(XEventTapModifiersTest, RecordsAModifierThatNoFingerHolds) {
    install({});
    KeyboardSettings settings(server_->displayName());
    ASSERT_TRUE(tap_->setRecording(true));
    settings.latch(kMod4Mask);
    keys_->chord({xkey::kE});
    settings.lock(kLockMask);
    keys_->chord({xkey::kT});
    ASSERT_TRUE(cameKeyDowns(2));
    EXPECT_THAT(keyDowns_, ElementsAre(kLeftCommandE, Hotkey{KeyCode{17}, {}}));
}

}  // namespace
}  // namespace kestrelbay::x11
