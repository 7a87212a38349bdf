#include "hotkeys/HotkeyRecorder.h"

#include <optional>

#include "fakes/FakeScreenLock.h"
#include "fakes/FakeTimers.h"
#include "hotkeys/ManagerFixture.h"

using namespace Qt::StringLiterals;
using std::chrono_literals::operator""ms;

namespace kestrelbay {

namespace {

constexpr auto kSwallow = EventVerdict::Swallow;
constexpr auto kPass = EventVerdict::Pass;
constexpr KeyCode kT{17};
constexpr KeyCode kK{40};
constexpr ModifierFlags kLeftCommandFlags{0x100008};

class HotkeyRecorderTest : public ManagerFixture {
protected:
    void SetUp() override {
        recorder_.emplace(
            manager(), timers_, screenLock_,
            HotkeyRecorder::Hooks{
                .started = [this] { told_ += u"started"_s; },
                .modifiersChanged = [this] { told_ += u"modifiers"_s; },
                .recorded =
                    [this](KeyCode keyCode, ModifierFlags flags) {
                        told_ +=
                            u"recorded %1 %2"_s.arg(toNumber(keyCode)).arg(flags.bits(), 0, 16);
                        if (whenRecorded_)
                            whenRecorded_();
                    },
                .cleared =
                    [this] {
                        told_ += u"cleared"_s;
                        if (whenCleared_)
                            whenCleared_();
                    },
                .keyWithoutModifier = [this] { told_ += u"no modifier"_s; },
                .ended = [this] { told_ += u"ended"_s; },
                .tapMissing = [this] { told_ += u"no tap"_s; },
                .keyboardHeld = [this] { told_ += u"keyboard held"_s; },
            });
    }
    void TearDown() override { recorder_.reset(); }

    HotkeyRecorder &recorder() { return *recorder_; }
    QStringList takeTold() { return std::exchange(told_, {}); }
    void startRecording() {
        recorder().start();
        EXPECT_EQ(takeTold(), QStringList{u"started"_s});
    }
    /// The key between press and release of the modifier.
    std::optional<EventVerdict> pressWith(KeyCode modifierKey, KeyCode keyCode) {
        EXPECT_EQ(tap_.press(modifierKey), kPass);
        const std::optional<EventVerdict> verdict = tap_.press(keyCode);
        tap_.release(modifierKey);
        return verdict;
    }
    void expectKeyboardGivenBack() {
        EXPECT_FALSE(tap_.isRecording());
        EXPECT_FALSE(manager().recordingCallback());
        EXPECT_FALSE(recorder_ && recorder().isRecording());
    }

    FakeTimers timers_;
    FakeScreenLock screenLock_;
    QStringList told_;
    std::function<void()> whenRecorded_;
    std::function<void()> whenCleared_;
    std::optional<HotkeyRecorder> recorder_;
};

TEST_F(HotkeyRecorderTest, AModifierPressedJustWhenItBeginsCounts) {
    tap_.pressAtRecording(key::kLeftCommand);
    recorder().start();
    EXPECT_EQ(takeTold(), QStringList({u"modifiers"_s, u"started"_s, u"modifiers"_s}));
    EXPECT_EQ(recorder().heldModifiers(), kLeftCommandFlags);
    EXPECT_EQ(tap_.press(kT), kSwallow);
    EXPECT_EQ(recorder().modifierFlags(), kLeftCommandFlags);
}

TEST_F(HotkeyRecorderTest, AnEscapePressedJustWhenItBeginsEndsIt) {
    tap_.pressAtRecording(key::kEscape);
    recorder().start();
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, GivesTheKeyboardBackBeforeTheScreenIsLocked) {
    EXPECT_EQ(screenLock_.watchCount(), 0U);
    startRecording();
    EXPECT_EQ(screenLock_.watchCount(), 1U);
    screenLock_.lock();
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    expectKeyboardGivenBack();
    EXPECT_EQ(screenLock_.watchCount(), 0U);
}

TEST_F(HotkeyRecorderTest, AsksForTheLockAndTheTimeOnlyWhileItRecords) {
    startRecording();
    pressWith(key::kLeftCommand, kT);
    EXPECT_EQ(screenLock_.watchCount(), 0U);
    EXPECT_EQ(timers_.waitingCount(), 0U);

    tap_.setKeyboardHeldByOthers(true);
    recorder().start();
    EXPECT_TRUE(recorder().isWaitingForKeyboard());
    EXPECT_EQ(screenLock_.watchCount(), 0U);
}

TEST_F(HotkeyRecorderTest, GivesTheKeyboardBackAfterHalfAMinuteWithoutAKey) {
    startRecording();
    timers_.advance(29'999ms);
    EXPECT_TRUE(recorder().isRecording());
    timers_.advance(1ms);
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    expectKeyboardGivenBack();
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(HotkeyRecorderTest, EachKeyStartsTheHalfMinuteAnew) {
    startRecording();
    for (const KeyCode keyCode : {kT, key::kLeftCommand}) {
        timers_.advance(29'999ms);
        tap_.press(keyCode);
    }
    timers_.advance(29'999ms);
    tap_.release(key::kLeftCommand);
    timers_.advance(29'999ms);
    EXPECT_TRUE(recorder().isRecording());
    timers_.advance(1ms);
    EXPECT_FALSE(recorder().isRecording());
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, GrabsTheKeyboardWhileItRecords) {
    EXPECT_FALSE(recorder().isRecording());
    startRecording();
    EXPECT_TRUE(recorder().isRecording());
    EXPECT_TRUE(tap_.isRecording());
    recorder().start();
    EXPECT_EQ(takeTold(), QStringList());
    recorder().stop();
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    expectKeyboardGivenBack();
    recorder().stop();
    EXPECT_EQ(takeTold(), QStringList());
}

TEST_F(HotkeyRecorderTest, RecordsEitherSideWhereSidesCannotBeTold) {
    tap_.setAbilities({.tellsSides = false, .passesKeysBack = false});
    manager().reinstallEventTap();
    startRecording();
    EXPECT_EQ(pressWith(key::kLeftCommand, kT), kSwallow);
    EXPECT_EQ(takeTold(), (QStringList{u"modifiers"_s, u"recorded 17 100000"_s, u"ended"_s}));
}

TEST_F(HotkeyRecorderTest, AKeyWithAModifierIsRecorded) {
    startRecording();
    EXPECT_EQ(tap_.press(key::kLeftCommand), kPass);
    EXPECT_EQ(recorder().heldModifiers(), kLeftCommandFlags);
    EXPECT_EQ(tap_.press(kT), kSwallow);
    EXPECT_EQ(takeTold(), (QStringList{u"modifiers"_s, u"recorded 17 100008"_s, u"ended"_s}));
    EXPECT_EQ(recorder().keyCode(), kT);
    EXPECT_EQ(recorder().modifierFlags(), kLeftCommandFlags);
    EXPECT_EQ(recorder().hotkeyString(), u"L⌘T"_s);
    EXPECT_TRUE(recorder().heldModifiers().isEmpty());
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, GivesTheKeyboardBackBeforeWhatWasRecordedIsSaved) {
    startRecording();
    int calls = 0;
    whenRecorded_ = [&] {
        ++calls;
        EXPECT_FALSE(tap_.isRecording());
        EXPECT_FALSE(manager().recordingCallback());
        EXPECT_TRUE(recorder().isRecording());
    };
    pressWith(key::kLeftCommand, kT);
    EXPECT_EQ(calls, 1);

    recorder().start();
    whenCleared_ = [&] {
        ++calls;
        EXPECT_FALSE(tap_.isRecording());
    };
    tap_.press(key::kDelete);
    EXPECT_EQ(calls, 2);
}

TEST_F(HotkeyRecorderTest, SidesAreToldApart) {
    startRecording();
    EXPECT_EQ(pressWith(key::kRightCommand, kK), kSwallow);
    EXPECT_EQ(recorder().modifierFlags(), ModifierFlags(0x100010));
    EXPECT_EQ(recorder().hotkeyString(), u"R⌘K"_s);
}

TEST_F(HotkeyRecorderTest, AKeyAloneIsRefusedAndRecordingGoesOn) {
    startRecording();
    EXPECT_EQ(tap_.press(key::kA), kSwallow);
    EXPECT_EQ(takeTold(), QStringList{u"no modifier"_s});
    EXPECT_TRUE(recorder().isRecording());
    EXPECT_TRUE(tap_.isRecording());
}

TEST_F(HotkeyRecorderTest, TheKeyAShowsItsModifiersOnly) {
    startRecording();
    EXPECT_EQ(pressWith(key::kLeftCommand, key::kA), kSwallow);
    EXPECT_EQ(recorder().keyCode(), KeyCode{0});
    EXPECT_EQ(recorder().hotkeyString(), u"L⌘"_s);
}

TEST_F(HotkeyRecorderTest, EscapeKeepsTheHotkeyWhateverIsHeld) {
    recorder().setHotkey(kT, kLeftCommandFlags);
    for (const bool withModifier : {false, true}) {
        startRecording();
        const auto verdict =
            withModifier ? pressWith(key::kLeftShift, key::kEscape) : tap_.press(key::kEscape);
        EXPECT_EQ(verdict, kSwallow);
        EXPECT_EQ(takeTold().last(), u"ended"_s);
        EXPECT_EQ(recorder().hotkeyString(), u"L⌘T"_s);
        expectKeyboardGivenBack();
    }
}

TEST_F(HotkeyRecorderTest, DeleteAloneClears) {
    recorder().setHotkey(kT, kLeftCommandFlags);
    startRecording();
    EXPECT_EQ(tap_.press(key::kDelete), kSwallow);
    EXPECT_EQ(takeTold(), (QStringList{u"cleared"_s, u"ended"_s}));
    EXPECT_EQ(recorder().hotkeyString(), QString());
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, DeleteWithAModifierIsRecorded) {
    startRecording();
    EXPECT_EQ(pressWith(key::kLeftCommand, key::kDelete), kSwallow);
    EXPECT_EQ(recorder().keyCode(), key::kDelete);
    EXPECT_EQ(recorder().modifierFlags(), kLeftCommandFlags);
}

TEST_F(HotkeyRecorderTest, ReleasedModifiersAreForgotten) {
    startRecording();
    tap_.press(key::kLeftCommand);
    tap_.press(key::kRightShift);
    EXPECT_EQ(recorder().heldModifiers(), ModifierFlags(0x12000C));
    tap_.release(key::kRightShift);
    tap_.release(key::kLeftCommand);
    EXPECT_TRUE(recorder().heldModifiers().isEmpty());
    EXPECT_EQ(tap_.press(kT), kSwallow);
    EXPECT_EQ(takeTold().last(), u"no modifier"_s);
}

TEST_F(HotkeyRecorderTest, AModifierHeldSinceBeforeCountsTheWrongWayRound) {
    tap_.press(key::kLeftCommand);
    startRecording();
    EXPECT_TRUE(recorder().heldModifiers().isEmpty());
    tap_.release(key::kLeftCommand);
    EXPECT_EQ(recorder().heldModifiers(), kLeftCommandFlags);
}

TEST_F(HotkeyRecorderTest, CapsLockIsNoModifier) {
    startRecording();
    EXPECT_EQ(manager().eventTapCallback(EventType::FlagsChanged, KeyCode{57}, {}), kPass);
    EXPECT_TRUE(recorder().heldModifiers().isEmpty());
}

TEST_F(HotkeyRecorderTest, ConfiguredHotkeysDoNotFireMeanwhile) {
    manager().addRule(rule(u"Terminal"_s, 17, 0x100008));
    startRecording();
    EXPECT_EQ(pressWith(key::kLeftCommand, kT), kSwallow);
    EXPECT_EQ(fired_, QStringList());
    EXPECT_EQ(pressWith(key::kLeftCommand, kT), kSwallow);
    EXPECT_EQ(fired_, QStringList{u"Terminal"_s});
}

TEST_F(HotkeyRecorderTest, NothingIsRecordedWithoutATap) {
    manager().teardownEventTap();
    recorder().start();
    EXPECT_EQ(takeTold(), QStringList{u"no tap"_s});
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, EndsWhenTheTapGoes) {
    startRecording();
    manager().teardownEventTap();
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, GoesOnOverAReinstall) {
    startRecording();
    tap_.press(key::kLeftCommand);
    manager().reinstallEventTap();
    EXPECT_EQ(tap_.press(kT), kSwallow);
    EXPECT_EQ(takeTold(), (QStringList{u"modifiers"_s, u"recorded 17 100008"_s, u"ended"_s}));
}

TEST_F(HotkeyRecorderTest, EndsWhenAReinstallCostsItTheKeyboard) {
    startRecording();
    tap_.setKeyboardHeldByOthers(true);
    manager().reinstallEventTap();
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, WaitsForAKeyboardThatAnotherProgramHolds) {
    tap_.setKeyboardHeldByOthers(true);
    recorder().start();
    EXPECT_TRUE(recorder().isWaitingForKeyboard());
    expectKeyboardGivenBack();
    timers_.advance(HotkeyRecorder::kKeyboardRetryInterval);
    EXPECT_EQ(takeTold(), QStringList());
    tap_.setKeyboardHeldByOthers(false);
    timers_.advance(HotkeyRecorder::kKeyboardRetryInterval);
    EXPECT_EQ(takeTold(), QStringList{u"started"_s});
    EXPECT_TRUE(recorder().isRecording());
    timers_.advance(HotkeyRecorder::kLongestWithoutKey - 1ms);
    EXPECT_TRUE(recorder().isRecording()) << "the time counts from where it began";
}

TEST_F(HotkeyRecorderTest, GivesUpAfterASecondWithoutTheKeyboard) {
    tap_.setKeyboardHeldByOthers(true);
    recorder().start();
    timers_.advance(std::chrono::milliseconds(999));
    EXPECT_EQ(takeTold(), QStringList());
    timers_.advance(std::chrono::milliseconds(1));
    EXPECT_EQ(takeTold(), QStringList{u"keyboard held"_s});
    EXPECT_FALSE(recorder().isWaitingForKeyboard());
    EXPECT_EQ(timers_.waitingCount(), 0U);
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, StopsWaitingForTheKeyboard) {
    tap_.setKeyboardHeldByOthers(true);
    recorder().start();
    recorder().stop();
    tap_.setKeyboardHeldByOthers(false);
    timers_.advance(std::chrono::seconds(2));
    EXPECT_EQ(takeTold(), QStringList());
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, ItsEndGivesTheKeyboardBack) {
    startRecording();
    recorder_.reset();
    EXPECT_EQ(takeTold(), QStringList());
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, MayBeDestroyedByWhatItTells) {
    whenRecorded_ = [this] { recorder_.reset(); };
    startRecording();
    EXPECT_EQ(pressWith(key::kLeftCommand, kT), kSwallow);
    EXPECT_FALSE(recorder_);
    expectKeyboardGivenBack();
}

TEST_F(HotkeyRecorderTest, AnotherRecorderEndsIt) {
    startRecording();
    HotkeyRecorder other(manager(), timers_, screenLock_, {});
    other.start();
    EXPECT_EQ(takeTold(), QStringList{u"ended"_s});
    EXPECT_FALSE(recorder().isRecording());
    recorder().stop();
    EXPECT_TRUE(other.isRecording());
    EXPECT_TRUE(tap_.isRecording());
}

}  // namespace

}  // namespace kestrelbay
