#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

#include <gtest/gtest.h>

#include "platform/EventTap.h"

namespace kestrelbay::testing {

/// Can another program hold keys, or the whole keyboard, back from the tap? To be
/// specialised for a Keyboard where it cannot.
template <typename Keyboard>
inline constexpr bool kOthersCanHoldKeys = true;

/// Does the system keep all keys from programs like this one at times?
template <typename Keyboard>
inline constexpr bool kSystemWithholdsKeys = true;

/// What every event tap promises that is told of keys. The Keyboard type is made afresh for each
/// test and has
///   EventTap &tap();
///   void hold(KeyCode), letGo(KeyCode)       any key goes down, or up
///   void holdLong(KeyCode)                   it goes down and repeats many times
///   int seenInFront(KeyCode)                 how many key-downs another program has seen
///   void settle()                            returns when all of it was delivered
///   void setHeldByOthers(Hotkey, bool)       another program grabs it, or lets go
///   void setKeyboardHeldByOthers(bool)       … the whole keyboard
///   void takeTapAway()                       another instance becomes the tap
///   void withholdKeys(bool)                  the system keeps all keys to itself
template <typename Keyboard>
class EventTapContract : public ::testing::Test {
protected:
    struct Event {
        EventType type;
        KeyCode keyCode;
        ModifierFlags flags;
        bool operator==(const Event &) const = default;
    };

    EventTap &tap() { return keyboard_.tap(); }

    EventTap::Handlers handlers() {
        return {.event =
                    [this](EventType type, KeyCode code, ModifierFlags flags) {
                        events_.push_back({type, code, flags});
                        return verdict_;
                    },
                .hotkeyPressed = [this](const Hotkey &) { ++hotkeysTold_; },
                .refusalsChanged = [this] { ++refusalChanges_; },
                .lost = [this] { ++losses_; },
                .withheldChanged = [this] { ++withheldChanges_; }};
    }

    void press(const std::vector<KeyCode> &keys) {
        std::ranges::for_each(keys, [this](KeyCode code) { keyboard_.hold(code); });
        std::for_each(keys.rbegin(), keys.rend(), [this](KeyCode code) { keyboard_.letGo(code); });
        keyboard_.settle();
    }

    std::vector<Hotkey> keyDowns() const {
        std::vector<Hotkey> hotkeys;
        for (const Event &event : events_) {
            if (event.type == EventType::KeyDown)
                hotkeys.push_back({event.keyCode, event.flags});
        }
        return hotkeys;
    }

    const Hotkey leftCommandT_{KeyCode{17}, ModifierFlags(0x100008)};
    Keyboard keyboard_;
    EventVerdict verdict_ = EventVerdict::Swallow;
    std::vector<Event> events_;
    int hotkeysTold_ = 0;
    int refusalChanges_ = 0;
    int losses_ = 0;
    int withheldChanges_ = 0;
};

TYPED_TEST_SUITE_P(EventTapContract);

TYPED_TEST_P(EventTapContract, DeliversNothingBeforeItIsInstalled) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_TRUE(this->events_.empty());
    EXPECT_TRUE(this->tap().refusedHotkeys().empty());
}

TYPED_TEST_P(EventTapContract, HasNoProblemUntilItCannotBeInstalled) {
    EXPECT_EQ(this->tap().problem(), TapProblem::None);
    ASSERT_TRUE(this->tap().install(this->handlers()));
    EXPECT_EQ(this->tap().problem(), TapProblem::None);
}

TYPED_TEST_P(EventTapContract, TellsSidesAndPassesKeysBack) {
    EXPECT_EQ(this->tap().abilities(), TapAbilities());
    ASSERT_TRUE(this->tap().install(this->handlers()));
    EXPECT_EQ(this->tap().abilities(), TapAbilities());
}

TYPED_TEST_P(EventTapContract, DeliversAWantedHotkeyBetweenItsModifiers) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->press({key::kLeftCommand, KeyCode{17}});
    using Record = typename TestFixture::Event;
    const std::vector<Record> expected{
        {EventType::FlagsChanged, key::kLeftCommand, ModifierFlags(0x100008)},
        {EventType::KeyDown, KeyCode{17}, ModifierFlags(0x100008)},
        {EventType::FlagsChanged, key::kLeftCommand, ModifierFlags()}};
    EXPECT_EQ(this->events_, expected);
    EXPECT_EQ(this->hotkeysTold_, 0) << "a press is told of once";
}

TYPED_TEST_P(EventTapContract, DeliversAHeldKeyOnceAndSwallowsItToTheEnd) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->keyboard_.hold(key::kLeftCommand);
    this->keyboard_.holdLong(KeyCode{17});
    this->keyboard_.letGo(KeyCode{17});
    this->keyboard_.letGo(key::kLeftCommand);
    this->keyboard_.settle();
    EXPECT_EQ(this->keyDowns(), std::vector{this->leftCommandT_});
    EXPECT_EQ(this->keyboard_.seenInFront(KeyCode{17}), 0);

    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_EQ(this->keyDowns().size(), 2U);
}

TYPED_TEST_P(EventTapContract, AHeldKeyThatPassedRepeatsForTheProgramInFront) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    this->verdict_ = EventVerdict::Pass;
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->keyboard_.hold(key::kLeftCommand);
    this->keyboard_.holdLong(KeyCode{17});
    this->keyboard_.letGo(KeyCode{17});
    this->keyboard_.letGo(key::kLeftCommand);
    this->keyboard_.settle();
    EXPECT_EQ(this->keyDowns(), std::vector{this->leftCommandT_});
    EXPECT_GT(this->keyboard_.seenInFront(KeyCode{17}), 1);
}

TYPED_TEST_P(EventTapContract, DeliversEitherSideOfAWantedHotkey) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->press({key::kRightCommand, KeyCode{17}});
    EXPECT_EQ(this->keyDowns(), (std::vector<Hotkey>{{KeyCode{17}, ModifierFlags(0x100010)}}));
}

TYPED_TEST_P(EventTapContract, DoesNotDeliverOtherKeys) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->press({KeyCode{17}});
    this->press({key::kLeftCommand, KeyCode{14}});
    this->press({key::kLeftCommand, key::kLeftShift, KeyCode{17}});
    EXPECT_TRUE(this->keyDowns().empty());
}

TYPED_TEST_P(EventTapContract, KeepsTheWantedHotkeysWhileRemoved) {
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->tap().remove();
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_TRUE(this->keyDowns().empty());
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_EQ(this->keyDowns().size(), 1U);
}

TYPED_TEST_P(EventTapContract, FollowsTheWantedHotkeys) {
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_TRUE(this->keyDowns().empty());
    this->tap().setWantedHotkeys({this->leftCommandT_});
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_EQ(this->keyDowns().size(), 1U);
    this->tap().setWantedHotkeys({});
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_EQ(this->keyDowns().size(), 1U);
}

TYPED_TEST_P(EventTapContract, TellsWhichHotkeysAnotherProgramHolds) {
    if (!kOthersCanHoldKeys<TypeParam>)
        GTEST_SKIP() << "nobody can hold keys back from this tap";
    this->keyboard_.setHeldByOthers(this->leftCommandT_, true);
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->keyboard_.settle();
    EXPECT_EQ(this->tap().refusedHotkeys(), std::vector{RefusedHotkey{this->leftCommandT_}});
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_TRUE(this->keyDowns().empty());

    const int before = this->refusalChanges_;
    this->keyboard_.setHeldByOthers(this->leftCommandT_, false);
    this->keyboard_.settle();
    EXPECT_TRUE(this->tap().refusedHotkeys().empty());
    EXPECT_EQ(this->refusalChanges_, before + 1);
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_EQ(this->keyDowns().size(), 1U);
}

TYPED_TEST_P(EventTapContract, DeliversEveryKeyWhileRecording) {
    ASSERT_TRUE(this->tap().install(this->handlers()));
    ASSERT_TRUE(this->tap().setRecording(true));
    this->press({key::kLeftCommand, KeyCode{14}});
    this->press({key::kEscape});
    EXPECT_EQ(this->keyDowns(), (std::vector<Hotkey>{{KeyCode{14}, ModifierFlags(0x100008)},
                                                     {key::kEscape, ModifierFlags()}}));
    EXPECT_TRUE(this->tap().setRecording(false));
    this->press({key::kEscape});
    EXPECT_EQ(this->keyDowns().size(), 2U);
}

TYPED_TEST_P(EventTapContract, CannotRecordUninstalled) {
    EXPECT_FALSE(this->tap().setRecording(true));
    ASSERT_TRUE(this->tap().install(this->handlers()));
    EXPECT_TRUE(this->tap().setRecording(true));
}

TYPED_TEST_P(EventTapContract, CannotRecordWhileTheKeyboardIsHeld) {
    if (!kOthersCanHoldKeys<TypeParam>)
        GTEST_SKIP() << "nobody can hold the keyboard back from this tap";
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->keyboard_.setKeyboardHeldByOthers(true);
    EXPECT_FALSE(this->tap().setRecording(true));
    this->keyboard_.setKeyboardHeldByOthers(false);
    EXPECT_TRUE(this->tap().setRecording(true));
}

TYPED_TEST_P(EventTapContract, EndsRecordingWhenItIsRemoved) {
    ASSERT_TRUE(this->tap().install(this->handlers()));
    ASSERT_TRUE(this->tap().setRecording(true));
    this->tap().remove();
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->press({key::kEscape});
    EXPECT_TRUE(this->keyDowns().empty());
}

TYPED_TEST_P(EventTapContract, DeliversWhatWaitsWithoutTheEventLoop) {
    this->tap().deliverWaiting();
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->keyboard_.hold(key::kLeftCommand);
    this->keyboard_.hold(KeyCode{17});
    // A key takes its time to come.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (this->keyDowns().empty() && std::chrono::steady_clock::now() < end)
        this->tap().deliverWaiting();
    EXPECT_EQ(this->keyDowns(), std::vector{this->leftCommandT_});
    this->keyboard_.letGo(KeyCode{17});
    this->keyboard_.letGo(key::kLeftCommand);
}

TYPED_TEST_P(EventTapContract, SaysThatItWasTakenAway) {
    if (!kOthersCanHoldKeys<TypeParam>)
        GTEST_SKIP() << "nobody can take this tap away";
    this->tap().setWantedHotkeys({this->leftCommandT_});
    ASSERT_TRUE(this->tap().install(this->handlers()));
    this->keyboard_.takeTapAway();
    this->keyboard_.settle();
    EXPECT_EQ(this->losses_, 1);
    EXPECT_EQ(this->tap().problem(), TapProblem::OtherInstance);
    this->press({key::kLeftCommand, KeyCode{17}});
    EXPECT_TRUE(this->keyDowns().empty());
    EXPECT_FALSE(this->tap().install(this->handlers()));
    EXPECT_EQ(this->losses_, 1);
}

TYPED_TEST_P(EventTapContract, TellsWhenTheSystemWithholdsKeys) {
    EXPECT_FALSE(this->tap().areKeysWithheld());
    ASSERT_TRUE(this->tap().install(this->handlers()));
    EXPECT_FALSE(this->tap().areKeysWithheld());
    this->keyboard_.withholdKeys(true);
    if (!kSystemWithholdsKeys<TypeParam>) {
        EXPECT_FALSE(this->tap().areKeysWithheld());
        return;
    }
    EXPECT_TRUE(this->tap().areKeysWithheld());
    EXPECT_EQ(this->withheldChanges_, 1);
    this->keyboard_.withholdKeys(false);
    EXPECT_FALSE(this->tap().areKeysWithheld());
    EXPECT_EQ(this->withheldChanges_, 2);

    this->keyboard_.withholdKeys(true);
    this->tap().remove();
    EXPECT_FALSE(this->tap().areKeysWithheld());
    EXPECT_EQ(this->withheldChanges_, 3);
}

REGISTER_TYPED_TEST_SUITE_P(
    EventTapContract, DeliversNothingBeforeItIsInstalled, HasNoProblemUntilItCannotBeInstalled,
    TellsSidesAndPassesKeysBack, DeliversAWantedHotkeyBetweenItsModifiers,
    DeliversAHeldKeyOnceAndSwallowsItToTheEnd, AHeldKeyThatPassedRepeatsForTheProgramInFront,
    DeliversEitherSideOfAWantedHotkey, DoesNotDeliverOtherKeys, KeepsTheWantedHotkeysWhileRemoved,
    FollowsTheWantedHotkeys, TellsWhichHotkeysAnotherProgramHolds, DeliversEveryKeyWhileRecording,
    CannotRecordUninstalled, CannotRecordWhileTheKeyboardIsHeld, EndsRecordingWhenItIsRemoved,
    DeliversWhatWaitsWithoutTheEventLoop, SaysThatItWasTakenAway, TellsWhenTheSystemWithholdsKeys);

}  // namespace kestrelbay::testing
